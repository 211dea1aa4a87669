// An engine over a small project, for tests of scripts.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"
#include "script/engine.h"
#include "script/settings.h"
#include "scriptui/dialog_driver.h"

namespace script_test {

using host::script::Engine;
using host::script::Limits;
using host::script::ScriptResult;
using host::script::Settings;
using host::scriptui::Action;
using host::scriptui::Alert;
using host::scriptui::ScriptedDriver;
using host::scriptui::Window;

// Does with each dialog what the test says.
class TestDriver : public host::scriptui::DialogDriver {
  public:
    std::function<void(Window&)> act;
    int dialogs = 0;

    void drive(Window& window) override {
        ++dialogs;
        if (act) act(window);
    }
};

struct World {
    explicit World(Limits limits = {});

    host::model::Project project;
    Settings settings = Settings::in_memory();
    TestDriver driver;
    std::vector<Alert> alerts;
    Engine engine;

    // Runs the text, expects success, returns the result.
    std::string run(std::string_view text);
    // Runs the text, expects failure, returns the error.
    std::string error(std::string_view text);
    // The names of a composition's layers from the top, with a space after each.
    static std::string stack(const host::model::Comp& comp);
};

// A project with the items 1 "folder", 2 "inner" (a composition in it, layers "a" "b" "c" from the top), 3 "picture"
// (footage), 4 "outer" (a composition with one layer "inner", of item 2).
struct SmallProject : World {
    SmallProject();

    host::model::Item& folder;
    host::model::Comp& inner;
    host::model::Item& picture;
    host::model::Comp& outer;
};

// A folder that goes with its contents.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

std::string read_file(const std::filesystem::path& file);
void write_file(const std::filesystem::path& file, std::string_view text);

}  // namespace script_test
