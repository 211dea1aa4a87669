// The script engine: one global environment in which texts are run over a project.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "script/shared_time.h"

namespace host::model {
class Project;
}

namespace host::scriptui {
struct Alert;
class DialogDriver;
}  // namespace host::scriptui

namespace host::script {

class Settings;

// How a run ended. `result` is the text of the last statement's value: empty for undefined and after a failure.
// `error` is for people: "Unable to execute script at line N. " and the reason. Both are UTF-8.
struct ScriptResult {
    bool failed = false;
    bool took_too_long = false;  // it was ended for that, or not begun; `failed` is set as well
    std::string result;
    std::string error;
};

// What scripts may use. One that goes beyond is ended, and cannot prevent it, within a few milliseconds. Time is the
// processor's; what a dialog waits for its driver does not count. A run also takes up to 4 MiB of the thread's stack.
struct Limits {
    std::size_t memory = std::size_t{512} << 20;                // bytes, of everything the environment holds
    std::chrono::milliseconds time = std::chrono::seconds(30);  // of one run
    // Of all runs of the engines that are given a copy of these limits. When it is used up, no script is begun.
    std::shared_ptr<SharedTime> time_of_all = std::make_shared<SharedTime>(std::chrono::minutes(2));
};

// Scripts see the standard objects of the language (without JSON), `app`, `PREFType`, `Window`, alert(), isValid() and
// the classes of items and layers. No file, network, process or environment variable can be reached from them.
class Engine {
  public:
    // Everything given here must outlive the engine. The driver shows alerts, `on_alert` is told of them before. Throws
    // std::runtime_error when there is no memory to start with.
    Engine(model::Project& project, Settings& settings, scriptui::DialogDriver& driver,
           std::function<void(const scriptui::Alert&)> on_alert, Limits limits = {});
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    // Runs a text in the environment that earlier runs left behind. Never throws for anything a script does: statements
    // before an error have taken effect, a syntax error anywhere means that none was run. A byte-order mark at the
    // start is passed over; bytes that are not UTF-8 survive the way into the project and back. An error in a dialog's
    // event handler is shown as an alert and leaves the dialog open, as does the application.
    ScriptResult run(std::string_view text);

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace host::script
