// The script engine: runs scripts over a project in one global environment.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "script/compiled_scripts.h"
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

// `result` is the value of the last statement as text: empty for undefined and after a failure. `error` is for people:
// "Unable to execute script at line N. " and the reason. Both are UTF-8.
struct ScriptResult {
    bool failed = false;
    bool took_too_long = false;  // stopped for it, or not started; `failed` is set too
    bool lacked_memory = false;  // `failed` is set too
    std::string result;
    std::string error;
};

// What scripts may use. A script that exceeds a limit is stopped within a few milliseconds and cannot prevent it. Time
// is CPU time; waiting for a dialog's driver does not count. A run also takes up to 4 MiB of the thread's stack.
struct Limits {
    std::size_t memory = std::size_t{512} << 20;                // bytes, of everything the environment holds
    std::chrono::milliseconds time = std::chrono::seconds(30);  // of one run
    // Shared by all runs of all engines given a copy of these limits. Once it is used up, no script starts.
    std::shared_ptr<SharedTime> time_of_all = std::make_shared<SharedTime>(std::chrono::minutes(2));
    // Shared likewise, so that a script is compiled once.
    std::shared_ptr<CompiledScripts> compiled = std::make_shared<CompiledScripts>();
};

// Scripts see the language's standard objects (without JSON), `app`, `PREFType`, `Window`, alert(), isValid() and the
// item and layer classes. They cannot reach files, the network, processes or environment variables.
class Engine {
  public:
    // All arguments must outlive the engine. `on_alert` sees each alert before the driver shows it. Throws
    // std::runtime_error if there is not enough memory to start.
    Engine(model::Project& project, Settings& settings, scriptui::DialogDriver& driver,
           std::function<void(const scriptui::Alert&)> on_alert, Limits limits = {});
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    // Runs a script in the environment that earlier runs left behind. Never throws for anything a script does.
    // Statements before an error have taken effect; after a syntax error anywhere, none has. A byte-order mark is
    // skipped; bytes that are not UTF-8 survive the round trip into the project. An error in a dialog's event handler
    // is shown as an alert and leaves the dialog open, as the application does.
    ScriptResult run(std::string_view text);

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace host::script
