// Whole files in, whole files out.
#include "cli/file_io.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "sandbox.h"

using cli::IoError;
using cli::put_in_place;
using cli::read_whole;
using test::Sandbox;
using testing::ElementsAre;

namespace fs = std::filesystem;

namespace {

template <class Work>
std::string error_of(Work work) {
    try {
        work();
    } catch (const IoError& error) {
        return error.what();
    }
    return "no error";
}

unsigned mode_of(const fs::path& file) {
    return static_cast<unsigned>(fs::status(file).permissions());
}

TEST(ReadWhole, gives_every_byte) {
    const Sandbox sandbox;
    const std::string bytes = std::string("a\0b\xFF\r\n", 6) + std::string(200'000, 'x');
    sandbox.write("file", bytes);
    EXPECT_EQ(read_whole(sandbox.path("file")), bytes);
}

TEST(ReadWhole, a_missing_file_and_a_folder_are_told_apart) {
    const Sandbox sandbox;
    EXPECT_EQ(error_of([&] { read_whole(sandbox.path("absent")); }), "cannot be read: No such file or directory");
    EXPECT_EQ(error_of([&] { read_whole(sandbox.folder()); }),
              "is a folder; name the files in it, as in FOLDER/*.json");
}

TEST(PutInPlace, a_new_file_gets_the_usual_mode) {
    const Sandbox sandbox;
    const mode_t mask = umask(027);
    put_in_place(sandbox.path("new"), "text");
    umask(mask);
    EXPECT_EQ(sandbox.read("new"), "text");
    EXPECT_EQ(mode_of(sandbox.path("new")), 0640U);
    EXPECT_THAT(sandbox.names(), ElementsAre("new"));
}

TEST(PutInPlace, an_old_file_keeps_its_mode_and_is_another_file) {
    const Sandbox sandbox;
    sandbox.write("old", "before");
    chmod(sandbox.path("old").c_str(), 0604);
    fs::create_hard_link(sandbox.path("old"), sandbox.path("other name"));
    put_in_place(sandbox.path("old"), "after");
    EXPECT_EQ(sandbox.read("old"), "after");
    EXPECT_EQ(mode_of(sandbox.path("old")), 0604U);
    EXPECT_EQ(sandbox.read("other name"), "before");  // it was renamed over, never written into
}

TEST(PutInPlace, a_symbolic_link_stays_and_its_file_is_replaced) {
    const Sandbox sandbox;
    fs::create_directory(sandbox.path("inner"));
    sandbox.write("inner/real", "before");
    fs::create_symlink("inner/real", sandbox.path("middle"));
    fs::create_symlink("middle", sandbox.path("link"));
    put_in_place(sandbox.path("link"), "after");
    EXPECT_TRUE(fs::is_symlink(sandbox.path("link")));
    EXPECT_TRUE(fs::is_symlink(sandbox.path("middle")));
    EXPECT_EQ(sandbox.read("inner/real"), "after");
    EXPECT_THAT(sandbox.names("inner"), ElementsAre("real"));
}

TEST(PutInPlace, a_dangling_link_makes_the_file_it_means) {
    const Sandbox sandbox;
    fs::create_symlink("real", sandbox.path("link"));
    put_in_place(sandbox.path("link"), "text");
    EXPECT_EQ(sandbox.read("real"), "text");
    EXPECT_TRUE(fs::is_symlink(sandbox.path("link")));
}

TEST(PutInPlace, a_device_is_written_into) {
    put_in_place("/dev/null", "text");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(error_of([] { put_in_place("/dev/full", "text"); }), "cannot be written: No space left on device");
}

TEST(PutInPlace, a_pipe_behind_a_link_of_the_system_is_written_into) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    put_in_place("/dev/fd/" + std::to_string(ends[1]), "text");
    char bytes[4];
    EXPECT_EQ(read(ends[0], bytes, sizeof bytes), 4);
    EXPECT_EQ(std::string(bytes, 4), "text");
    close(ends[0]);
    close(ends[1]);
}

TEST(PutInPlace, an_old_file_keeps_its_owner_and_group_where_that_is_allowed) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may give files away";
    const Sandbox sandbox;
    sandbox.write("old", "before");
    ASSERT_EQ(chown(sandbox.path("old").c_str(), 12345, 23456), 0);
    chmod(sandbox.path("old").c_str(), 0640);
    put_in_place(sandbox.path("old"), "after");
    struct stat facts {};
    ASSERT_EQ(stat(sandbox.path("old").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_uid, 12345U);
    EXPECT_EQ(facts.st_gid, 23456U);
    EXPECT_EQ(facts.st_mode & 07777U, 0640U);
    EXPECT_EQ(sandbox.read("old"), "after");
}

TEST(PutInPlace, a_name_as_long_as_names_can_be_is_no_trouble) {
    const Sandbox sandbox;
    const std::string name(255, 'n');
    sandbox.write(name, "before");
    put_in_place(sandbox.path(name), "after");
    EXPECT_EQ(sandbox.read(name), "after");
    EXPECT_THAT(sandbox.names(), ElementsAre(name));
}

TEST(PutInPlace, links_that_lead_nowhere_in_a_circle_are_left_alone) {
    const Sandbox sandbox;
    fs::create_symlink("two", sandbox.path("one"));
    fs::create_symlink("one", sandbox.path("two"));
    EXPECT_EQ(error_of([&] { put_in_place(sandbox.path("one"), "text"); }),
              "cannot be written: Too many levels of symbolic links");
    EXPECT_THAT(sandbox.names(), ElementsAre("one", "two"));
    EXPECT_TRUE(fs::is_symlink(sandbox.path("one")));
}

TEST(PutInPlace, a_folder_and_a_missing_folder_are_errors) {
    const Sandbox sandbox;
    EXPECT_EQ(error_of([&] { put_in_place(sandbox.folder(), "text"); }), "cannot be written: it is a folder");
    EXPECT_EQ(error_of([&] { put_in_place(sandbox.path("absent/file"), "text"); }),
              "cannot be written: no file can be made in its folder: No such file or directory");
}

}  // namespace
