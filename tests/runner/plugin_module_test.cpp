// Loading binaries: what is a plug-in, and what to say about everything else.
#include "runner/plugin_module.h"

#include <gmock/gmock.h>

#include <fstream>

using host::runner::LoadError;
using host::runner::PluginModule;
using testing::AllOf;
using testing::HasSubstr;

namespace {

const std::filesystem::path kFolder = TEST_PLUGIN_FOLDER;

std::string load_error(const std::filesystem::path& file) {
    try {
        const PluginModule module(file);
    } catch (const LoadError& error) {
        return error.what();
    }
    return "no error";
}

TEST(PluginModule, a_plug_in_is_loaded_and_known_by_its_file_name) {
    const PluginModule module(kFolder / "troublemaker.so");
    EXPECT_NE(module.entry_point(), nullptr);
    EXPECT_EQ(module.name(), "troublemaker");
}

TEST(PluginModule, the_entry_point_may_have_another_name) {
    const PluginModule module(kFolder / "no_entry_point.so", "OtherEntry");
    EXPECT_EQ(module.entry_point()(nullptr, 0, 0, 0, nullptr), A_Err_NONE);
}

TEST(PluginModule, a_missing_file_is_named) {
    EXPECT_EQ(load_error(kFolder / "absent.so"), "there is no plug-in at '" + (kFolder / "absent.so").string() + "'");
}

TEST(PluginModule, a_bare_name_is_a_file_in_the_working_folder_and_not_a_system_library) {
    EXPECT_EQ(load_error("libc.so.6"), "there is no plug-in at 'libc.so.6'");
}

TEST(PluginModule, a_text_file_is_not_loadable) {
    const std::filesystem::path file = std::filesystem::path(testing::TempDir()) / "text.so";
    std::ofstream(file) << "no machine code";
    EXPECT_THAT(load_error(file), AllOf(HasSubstr(file.string()), HasSubstr("is not a loadable plug-in (")));
    std::filesystem::remove(file);
}

TEST(PluginModule, a_folder_is_not_loadable) {
    EXPECT_THAT(load_error(kFolder), HasSubstr("is not a loadable plug-in ("));
}

TEST(PluginModule, a_module_with_an_unresolved_function_is_refused_at_loading) {
    EXPECT_THAT(load_error(kFolder / "unresolved.so"), HasSubstr("function_that_nobody_has"));
}

TEST(PluginModule, a_module_without_the_entry_point_is_no_plug_in) {
    EXPECT_EQ(load_error(kFolder / "no_entry_point.so"),
              "'" + (kFolder / "no_entry_point.so").string() +
                  "' is not a plug-in: it exports no function named EntryPointFunc");
}

}  // namespace
