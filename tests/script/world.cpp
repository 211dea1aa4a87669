// An engine over a small project, for tests of scripts.
#include "world.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

namespace script_test {

World::World(Limits limits)
    : engine(
          project, settings, driver, [this](const Alert& alert) { alerts.push_back(alert); }, limits) {}

std::string World::run(std::string_view text) {
    const ScriptResult outcome = engine.run(text);
    EXPECT_FALSE(outcome.failed) << outcome.error;
    EXPECT_EQ(outcome.error, "");
    return outcome.result;
}

std::string World::error(std::string_view text) {
    const ScriptResult outcome = engine.run(text);
    EXPECT_TRUE(outcome.failed) << "result: " << outcome.result;
    EXPECT_EQ(outcome.result, "");
    return outcome.error;
}

std::string World::stack(const host::model::Comp& comp) {
    std::string names;
    for (int i = 0; i < comp.layer_count(); ++i) names += comp.layer_at(i).display_name() + " ";
    return names;
}

SmallProject::SmallProject()
    : folder(project.add_folder("folder")),
      inner(project.add_comp("inner", &folder)),
      picture(project.add_footage("picture", {}, 320, 240)),
      outer(project.add_comp("outer")) {
    for (host::model::Comp* comp : {&inner, &outer}) {
        comp->load_size(640, 480);
        comp->load_timing(25, host::model::from_seconds(10));
    }
    for (const char* name : {"a", "b", "c"}) {
        host::model::Layer& layer = inner.load_layer(host::model::LayerKind::av, &picture);
        layer.load_name(name);
        layer.load_timing({}, {}, host::model::from_seconds(10), 1);
    }
    outer.load_layer(host::model::LayerKind::av, &inner).load_timing({}, {}, host::model::from_seconds(10), 1);
    project.undo().clear();
}

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "script_test.XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string read_file(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void write_file(const std::filesystem::path& file, std::string_view text) {
    std::ofstream(file, std::ios::binary) << text;
}

}  // namespace script_test
