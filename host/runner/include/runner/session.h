// Plug-ins in one host over one project: their entries, menu items and commands.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "model/project.h"
#include "runner/plugin_module.h"
#include "script/engine.h"
#include "script/settings.h"
#include "scriptui/dialog_driver.h"
#include "suites/suite_host.h"

namespace host::runner {

// What came of one visit to the plug-ins.
struct VisitResult {
    A_Err error = A_Err_NONE;             // the first code other than 0 that a hook or the entry point gave
    bool has_thrown = false;              // an exception left the plug-in; `error` is set as well
    bool is_enabled = true;               // false: the command is disabled and no command hook was asked
    bool is_handled = false;              // some command hook said so
    bool scripts_took_too_long = false;   // one was ended, and those after it were not run: the work is not complete
    std::vector<scriptui::Alert> alerts;  // that scripts showed
    std::vector<std::string> reports;     // boxes that the plug-in showed through the host
    std::vector<std::string> log;  // a sentence for each failed suite call, failed script, hook that failed or threw,
                                   // and group of undo left open
    std::vector<std::string> undo_steps;  // names of the steps that the visit added, oldest first

    bool has_failed() const { return error != A_Err_NONE; }
};

// The thread that makes a session is the one to use it. Of several sessions the newest must end first.
class Session {
  public:
    // Everything given must outlive the session.
    Session(model::Project& project, script::Settings& settings, scriptui::DialogDriver& dialogs,
            const script::Limits& limits = {});
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Calls the plug-in's entry point; once for each plug-in. If it fails, what it registered is dropped.
    VisitResult start(const PluginModule& module);

    // Asks the update-menu hooks, as when a menu is about to be drawn.
    VisitResult update_menus();

    // What a person does who picks the command from its menu: menus are updated, a disabled command is refused, else
    // every command hook is asked in order of registration and told whether one before it handled the command. Changes
    // stay in the project even after an error, as undo steps that the caller may take back.
    VisitResult run_command(AEGP_Command command);

    // Asks the idle hooks, as happens again and again while nothing else is going on.
    VisitResult idle();

    // Asks the death hooks, as when the application ends: the last visit of a session that has one.
    VisitResult quit();

    const std::vector<suites::MenuItem>& menu_items() const { return suites_.menu_items(); }
    suites::SuiteHost& suites() { return suites_; }  // observers, what was handed out and never given back, suites held

  private:
    A_Err visit(const suites::PluginCall& facts, const std::string& what, const std::function<A_Err()>& call);
    void ask_update_hooks();
    void ask_command_hooks(AEGP_Command command);
    void ask_idle_hooks();
    void ask_death_hooks();
    // Runs `work` and gathers everything that came of it.
    VisitResult observe(const std::function<void()>& work);
    suites::ScriptReply run_script(std::string_view text);

    model::Project& project_;
    script::Engine engine_;
    suites::SuiteHost suites_;
    std::map<AEGP_PluginID, AEGP_GlobalRefcon> global_refcons_;  // what each plug-in left for its hooks
    VisitResult current_;                                        // of the visit under way
};

}  // namespace host::runner
