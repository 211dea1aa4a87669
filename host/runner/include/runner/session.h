// Runs plug-ins over one project: entry points, menu items and commands.
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

// The result of calling the plug-ins: starting one, updating menus, or running a command.
struct VisitResult {
    A_Err error = A_Err_NONE;             // the first error code from a hook or the entry point
    bool has_thrown = false;              // a plug-in threw an exception; `error` is set too
    bool is_enabled = true;               // false: the command is disabled, so no command hook was called
    bool is_handled = false;              // by some command hook
    bool scripts_took_too_long = false;   // one was stopped and later ones were not run, so the result is incomplete
    bool lacked_memory = false;           // some part of the program, which may have got by all the same
    std::vector<scriptui::Alert> alerts;  // shown by scripts
    std::vector<std::string> reports;     // message boxes of the plug-in
    std::vector<std::string> log;  // a sentence for each failed suite call or script, each hook that failed or threw,
                                   // and undo groups left open
    std::vector<std::string> undo_steps;  // names of the undo steps added, oldest first

    bool has_failed() const { return error != A_Err_NONE; }
};

// Use it on the thread that created it. Destroy sessions in reverse order of creation.
class Session {
  public:
    // The arguments must outlive the session.
    Session(model::Project& project, script::Settings& settings, scriptui::DialogDriver& dialogs,
            const script::Limits& limits = {});
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Calls the plug-in's entry point. If it fails, what it registered is dropped.
    VisitResult start(const PluginModule& module);

    // Calls the update-menu hooks, as before a menu is drawn.
    VisitResult update_menus();

    // Runs a command as if the user had chosen it: updates the menus and, if the command is enabled, calls the command
    // hooks in order of registration. Each hears whether an earlier one handled the command. Changes remain even after
    // an error, as undo steps that the caller may undo.
    VisitResult run_command(AEGP_Command command);

    // Shows the command hooks a command that is none of theirs, as happens with those of the application.
    VisitResult pass_foreign_command();

    // Calls the idle hooks, as happens again and again while nothing else is going on.
    VisitResult idle();

    // Calls the death hooks, as when the application ends: the last visit of a session that has one.
    VisitResult quit();

    const std::vector<suites::MenuItem>& menu_items() const { return suites_.menu_items(); }
    suites::SuiteHost& suites() { return suites_; }  // for observers, the ledger, and suites held

  private:
    A_Err visit(const suites::PluginCall& facts, const std::string& what, const std::function<A_Err()>& call);
    void call_update_menu_hooks();
    void call_command_hooks(AEGP_Command command);
    void call_idle_hooks();
    void call_death_hooks();
    // Runs `work` and collects what happened.
    VisitResult observe(const std::function<void()>& work);
    suites::ScriptReply run_script(std::string_view text);

    model::Project& project_;
    script::Engine engine_;
    suites::SuiteHost suites_;
    std::map<AEGP_PluginID, AEGP_GlobalRefcon> global_refcons_;  // set by each plug-in for its hooks
    VisitResult current_;                                        // of the call in progress
};

}  // namespace host::runner
