// Settings in a file: several processes, damage, places that cannot be written.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "world.h"

namespace script_test {
namespace {

namespace fs = std::filesystem;
using host::script::SettingsError;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string value(const Settings& settings, std::string_view section, std::string_view key) {
    const std::string* found = settings.find(section, key);
    return found != nullptr ? *found : "(none)";
}

TEST(SettingsFile, is_created_with_its_folder_on_the_first_save) {
    TemporaryFolder folder;
    const fs::path file = folder / "deep/down/settings";
    Settings settings(file);
    EXPECT_FALSE(fs::exists(folder / "deep"));
    settings.save("section", "key", "value");
    EXPECT_EQ(value(Settings(file), "section", "key"), "value");
    EXPECT_THAT(settings.problems(), IsEmpty());
}

TEST(SettingsFile, can_be_read_by_people) {
    TemporaryFolder folder;
    Settings settings(folder / "settings");
    settings.save("my section", "name", "fx \"1\"");
    settings.save("my section", "count", "3");
    EXPECT_THAT(read_file(folder / "settings"),
                HasSubstr("[\"my section\"]\n\"count\" = \"3\"\n\"name\" = \"fx \\\"1\\\"\"\n"));
}

TEST(SettingsFile, holds_any_text) {
    TemporaryFolder folder;
    std::string every_byte;
    for (int byte = 0; byte < 256; ++byte) every_byte.push_back(static_cast<char>(byte));
    Settings settings(folder / "settings");
    for (const std::string& text : {every_byte, std::string(), std::string("]\n[\"x\"]"), std::string("\\x41"),
                                    std::string("# no"), std::string(" = "), std::string("\U0001F600")}) {
        settings.save("s" + text, "k" + text, text);
    }
    const Settings again(folder / "settings");
    EXPECT_THAT(again.problems(), IsEmpty());
    EXPECT_EQ(value(again, "s" + every_byte, "k" + every_byte), every_byte);
    EXPECT_EQ(value(again, "s\\x41", "k\\x41"), "\\x41");
    EXPECT_EQ(value(again, "s", "k"), "");
    EXPECT_EQ(value(again, "s]\n[\"x\"]", "k]\n[\"x\"]"), "]\n[\"x\"]");
}

TEST(SettingsFile, a_later_value_replaces_an_earlier_one) {
    TemporaryFolder folder;
    Settings settings(folder / "settings");
    settings.save("s", "k", "one");
    settings.save("s", "k", "two");
    EXPECT_EQ(value(settings, "s", "k"), "two");
    EXPECT_EQ(value(Settings(folder / "settings"), "s", "k"), "two");
}

TEST(SettingsFile, what_others_saved_in_the_meantime_is_kept_and_seen) {
    TemporaryFolder folder;
    Settings one(folder / "settings");
    Settings other(folder / "settings");
    one.save("of one", "k", "1");
    other.save("of other", "k", "2");
    one.save("of one", "more", "3");
    EXPECT_EQ(value(one, "of other", "k"), "2");
    const Settings again(folder / "settings");
    EXPECT_EQ(value(again, "of one", "k") + value(again, "of other", "k") + value(again, "of one", "more"), "123");
}

TEST(SettingsFile, leaves_nothing_else_in_the_folder) {
    TemporaryFolder folder;
    Settings settings(folder / "settings");
    for (int i = 0; i < 5; ++i) settings.save("s", "k", std::to_string(i));
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder.path())) names.push_back(entry.path().filename());
    EXPECT_THAT(names, ElementsAre("settings"));
}

TEST(SettingsFile, saving_an_unchanged_value_leaves_the_file_alone) {
    TemporaryFolder folder;
    Settings(folder / "settings").save("s", "k", "v");
    write_file(folder / "settings", read_file(folder / "settings") + "# a note of the user's\n");
    Settings(folder / "settings").save("s", "k", "v");
    EXPECT_THAT(read_file(folder / "settings"), HasSubstr("# a note of the user's"));
}

TEST(SettingsFile, a_link_stays_a_link) {
    TemporaryFolder folder;
    fs::create_directory(folder / "real");
    write_file(folder / "real/settings", "");
    fs::create_symlink(folder / "real/settings", folder / "link");
    Settings(folder / "link").save("s", "k", "v");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(value(Settings(folder / "real/settings"), "s", "k"), "v");
}

class DamagedSettings : public testing::TestWithParam<const char*> {};

TEST_P(DamagedSettings, count_as_empty_are_reported_and_set_aside) {
    TemporaryFolder folder;
    const std::string damaged = std::string("[\"s\"]\n\"old\" = \"value\"\n") + GetParam() + "\n";
    write_file(folder / "settings", damaged);
    Settings settings(folder / "settings");
    ASSERT_EQ(settings.problems().size(), 1U);
    EXPECT_THAT(settings.problems()[0], HasSubstr("is damaged in line 3; its settings are not used."));
    EXPECT_EQ(settings.find("s", "old"), nullptr);
    settings.save("s", "k", "v");
    EXPECT_EQ(settings.problems().size(), 1U);
    EXPECT_EQ(read_file(folder / "settings.damaged"), damaged);
    const Settings again(folder / "settings");
    EXPECT_THAT(again.problems(), IsEmpty());
    EXPECT_EQ(value(again, "s", "k"), "v");
}

INSTANTIATE_TEST_SUITE_P(SettingsFile, DamagedSettings,
                         testing::Values("nonsense", "\"open", "\"k\" \"v\"", "\"k\" = v", "\"k\" = \"v\" more",
                                         "[\"s\"", "\"k\" = \"\\y\"", "\"k\" = \"\\x4\"", "\"k\" = \"\\x4G\"", "[s]",
                                         "= \"v\"", "\"k\" =", "\x01\x02\xFF"));

TEST(SettingsFile, a_value_above_all_sections_is_damage) {
    TemporaryFolder folder;
    write_file(folder / "settings", "\"k\" = \"v\"\n");
    EXPECT_EQ(Settings(folder / "settings").problems().size(), 1U);
}

TEST(SettingsFile, blank_lines_comments_and_foreign_line_ends_are_no_damage) {
    TemporaryFolder folder;
    write_file(folder / "settings", "\r\n# note\r\n  [ \"s\" ]\r\n\t\"k\"=\"v\"\r\n\"last\" = \"x\"");
    const Settings settings(folder / "settings");
    EXPECT_THAT(settings.problems(), IsEmpty());
    EXPECT_EQ(value(settings, "s", "k") + value(settings, "s", "last"), "vx");
}

TEST(SettingsFile, a_place_that_cannot_be_written_is_an_error_and_the_value_stays_in_memory) {
    TemporaryFolder folder;
    write_file(folder / "file", "");
    Settings settings(folder / "file" / "settings");
    EXPECT_THAT(settings.problems(), IsEmpty());
    EXPECT_THROW(settings.save("s", "k", "v"), SettingsError);
    EXPECT_EQ(value(settings, "s", "k"), "v");
}

TEST(SettingsFile, a_folder_in_the_files_place_is_reported_and_left_alone) {
    TemporaryFolder folder;
    fs::create_directory(folder / "settings");
    Settings settings(folder / "settings");
    ASSERT_EQ(settings.problems().size(), 1U);
    EXPECT_THAT(settings.problems()[0], HasSubstr("Cannot read settings file"));
    try {
        settings.save("s", "k", "v");
        ADD_FAILURE() << "saved over a folder";
    } catch (const SettingsError& e) {
        EXPECT_THAT(e.what(), HasSubstr("settings"));
    }
    EXPECT_TRUE(fs::is_directory(folder / "settings"));
}

TEST(SettingsFile, processes_that_save_at_once_lose_nothing_and_never_see_half_a_file) {
    TemporaryFolder folder;
    const fs::path file = folder / "settings";
    constexpr int kProcesses = 4;
    constexpr int kSaves = 40;
    std::vector<pid_t> children;
    for (int process = 0; process < kProcesses; ++process) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            int status = 0;
            try {
                for (int i = 0; i < kSaves; ++i) {
                    Settings settings(file);
                    if (!settings.problems().empty()) status = 1;
                    settings.save("section " + std::to_string(process), std::to_string(i), std::string(500, 'x'));
                }
            } catch (const std::exception&) {
                status = 2;
            }
            ::_exit(status);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    const Settings settings(file);
    EXPECT_THAT(settings.problems(), IsEmpty());
    for (int process = 0; process < kProcesses; ++process) {
        for (int i = 0; i < kSaves; ++i) {
            EXPECT_NE(settings.find("section " + std::to_string(process), std::to_string(i)), nullptr)
                << process << " " << i;
        }
    }
}

TEST(Settings, in_memory_are_forgotten) {
    Settings settings = Settings::in_memory();
    settings.save("s", "k", "v");
    EXPECT_EQ(value(settings, "s", "k"), "v");
    EXPECT_EQ(Settings::in_memory().find("s", "k"), nullptr);
}

TEST(Settings, a_copy_in_memory_has_the_values_and_leaves_the_file_alone) {
    const TemporaryFolder folder;
    Settings settings(folder / "settings");
    settings.save("section", "key", "value");
    const std::string before = read_file(folder / "settings");
    Settings copy = settings.in_memory_copy();
    ASSERT_NE(copy.find("section", "key"), nullptr);
    EXPECT_EQ(*copy.find("section", "key"), "value");
    copy.save("section", "key", "other");
    EXPECT_EQ(read_file(folder / "settings"), before);
    EXPECT_EQ(*settings.find("section", "key"), "value");
}

}  // namespace
}  // namespace script_test
