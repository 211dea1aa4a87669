// One life of a plug-in in a process of its own: what it is put through, and everything that came of it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/child_process.h"
#include "suites/ledger_report.h"
#include "validator/calls.h"
#include "validator/fault.h"
#include "validator/situation.h"

namespace validator {

// What is done after the plug-in has been started.
enum class Act : std::uint8_t {
    update_menus,
    command,          // menus are updated, then a person picks the command
    undo,             // the steps that the visit before has made are taken back
    other_comp,       // another composition comes to the front, its first layer selected
    delete_comp,      // the same, and the composition that was in front is deleted
    foreign_command,  // the command hook sees a command of the application
    idle,
    quit,
};

struct VisitPlan {
    const Situation* situation = nullptr;  // outlives the plan
    std::vector<Act> acts = {};            // none: the plug-in is only started
    std::size_t item = 0;                  // the menu item that is picked, in menu order
    Fault fault = {};
    std::string journal = {};  // the file for everything that is said; empty: none
};

// A call that the host refused, without being told to.
struct Refusal {
    std::string function;  // "LayerSuite5.AEGP_DeleteLayer"
    A_Err code = A_Err_NONE;
    std::string sentence;
};

// What came of starting the plug-in or of one act.
struct Outcome {
    std::vector<MadeCall> calls;   // of very many the first
    std::uint64_t call_count = 0;  // of all
    A_Err error = A_Err_NONE;
    bool has_thrown = false;
    host::suites::PluginFunction failed_in{};  // the first function that returned the error, or threw
    bool is_enabled = true;
    bool is_handled = false;
    std::vector<std::string> told;  // boxes and alerts that the user saw
    std::vector<std::string> script_problems;
    std::vector<std::string> undo_steps;
    int groups_left_open = 0;
    std::vector<Refusal> refusals;
    // The project afterwards, as a number that is equal for equal projects, and how it differs from before the act,
    // empty if it does not; undo: from before the act that was taken back.
    std::uint64_t project = 0;
    std::string change;
    // A later command: how the project differs from what the first one made of it.
    std::string change_from_first;
};

struct OfferedItem {
    std::string text;
    bool is_enabled = false;  // after the last time that menus were updated
};

// What a plug-in registered.
struct Registered {
    std::vector<OfferedItem> items;
    std::uint64_t command_hooks = 0;
    std::uint64_t update_menu_hooks = 0;
    std::uint64_t idle_hooks = 0;
    std::uint64_t death_hooks = 0;
};

struct VisitRecord {
    // How the process ended. Unless it finished, the rest is as far as it came.
    host::base::ProcessEnd end;
    std::string printed;  // the beginning of what the plug-in wrote to the standard streams
    std::string where;    // how far it came: "in its command hook, in LayerSuite5.AEGP_GetLayerName (call 12)"

    std::string host_problem;  // what went wrong on the side of this program; empty if nothing did
    std::string load_problem;  // why the module could not be loaded; empty if it could
    Registered registered;
    Outcome start;
    std::vector<Outcome> outcomes;              // of the acts
    std::vector<host::suites::HandedOut> left;  // never disposed of
    std::vector<host::suites::Misuse> freed_while_locked;
    std::vector<host::suites::Misuse> disposed_twice;
    std::vector<host::suites::Misuse> used_after_disposal;
    std::vector<std::string> held;  // suites
    std::vector<std::string> dialog_problems;
    bool has_left_processes = false;  // what it has started still ran when it had been unloaded

    // All functions of the plug-in had come back before the process ended, whichever way.
    bool has_come_through() const { return where == kBetweenFunctions; }
    static constexpr const char* kBetweenFunctions = "between its functions";
    bool has_finished() const { return end.kind == host::base::ProcessEnd::Kind::finished; }
};

struct VisitLimits {
    std::chrono::seconds processor_time{10};
    std::chrono::milliseconds time{30'000};
    std::optional<std::size_t> memory = std::size_t{2} << 30;
};

// Makes the visits, at most `jobs` at once, and hands each record over, in the order of the plans. `on_record` may say
// false: then no further visit is made. Throws host::base::NoProcess.
void make_visits(const std::string& module, const std::vector<VisitPlan>& plans, const VisitLimits& limits,
                 unsigned jobs, const std::function<bool(const VisitPlan&, const VisitRecord&)>& on_record);

VisitRecord make_visit(const std::string& module, const VisitPlan& plan, const VisitLimits& limits);

}  // namespace validator
