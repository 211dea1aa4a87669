// Plug-ins in one host over one project: their entries, menu items and commands.
#include "runner/session.h"

#include <exception>
#include <utility>

#include "suites/error_codes.h"

namespace host::runner {
namespace {

// The version of the plug-in interface that this host says it is.
constexpr A_long kInterfaceMajor = 114;
constexpr A_long kInterfaceMinor = 0;

using Door = suites::SuiteHost::Visit::Door;

}  // namespace

Session::Session(model::Project& project, script::Settings& settings, script::DialogDriver& dialogs)
    : project_(project),
      engine_(project, settings, dialogs, [this](const script::Alert& alert) { current_.alerts.push_back(alert); }),
      suites_(project, {.run_script = [this](std::string_view text) { return run_script(text); },
                        .report =
                            [this, &dialogs](std::string_view plugin, std::string_view text) {
                                current_.reports.emplace_back(text);
                                dialogs.show({std::string(text), std::string(plugin)});
                            }}) {}

Outcome Session::start(const PluginModule& module) {
    return observe([&] {
        const AEGP_PluginID id = suites_.add_plugin(module.name());
        AEGP_GlobalRefcon& refcon = global_refcons_[id];
        const A_Err error = visit(id, Door::entry_point, "its entry point", [&] {
            return module.entry_point()(suites_.basic_suite(), kInterfaceMajor, kInterfaceMinor, id, &refcon);
        });
        if (error != A_Err_NONE) suites_.drop_plugin(id);
    });
}

Outcome Session::update_menus() {
    return observe([this] { ask_update_hooks(); });
}

Outcome Session::run_command(AEGP_Command command) {
    return observe([this, command] {
        ask_update_hooks();
        const suites::MenuItem* item = suites_.menu_item(command);
        current_.is_enabled = item != nullptr && item->enabled;
        if (current_.is_enabled) ask_command_hooks(command);
    });
}

void Session::ask_update_hooks() {
    suites_.prepare_menus_for_update();
    for (const suites::UpdateMenuHook& hook : suites_.update_menu_hooks()) {
        visit(hook.plugin_id, Door::hook, "its update-menu hook",
              [&] { return hook.function(global_refcons_[hook.plugin_id], hook.refcon, AEGP_WindType_TIME_LAYOUT); });
    }
}

void Session::ask_command_hooks(AEGP_Command command) {
    for (const suites::CommandHook& hook : suites_.command_hooks()) {
        if (hook.command != AEGP_Command_ALL && hook.command != command) continue;
        A_Boolean handled = 0;
        visit(hook.plugin_id, Door::hook, "its command hook", [&] {
            return hook.function(global_refcons_[hook.plugin_id], hook.refcon, command, hook.priority,
                                 current_.is_handled, &handled);
        });
        current_.is_handled = current_.is_handled || handled != 0;
    }
}

A_Err Session::visit(AEGP_PluginID plugin, Door door, const std::string& what, const std::function<A_Err()>& call) {
    const auto complain = [&](const std::string& sentence) {
        current_.log.push_back("plug-in " + suites_.plugin_name(plugin) + ": " + what + ' ' + sentence);
    };
    A_Err error = A_Err_NONE;
    {
        const suites::SuiteHost::Visit visit(suites_, plugin, door);
        try {
            error = call();
            if (error != A_Err_NONE) complain("returned error " + std::to_string(error));
        } catch (const std::exception& exception) {
            error = suites::kInternal;
            complain(std::string("threw an exception: ") + exception.what());
            current_.has_thrown = true;
        } catch (...) {
            error = suites::kInternal;
            complain("threw something that is no exception");
            current_.has_thrown = true;
        }
    }
    if (const int open = project_.undo().close_all_groups(); open > 0) {
        complain("left " + std::to_string(open) + (open == 1 ? " undo group" : " undo groups") +
                 " open; the host closed " + (open == 1 ? "it" : "them") + " and kept the changes as one step");
    }
    if (!current_.has_failed()) current_.error = error;
    return error;
}

Outcome Session::observe(const std::function<void()>& work) {
    const std::size_t steps_before = project_.undo().step_names().size();
    const std::size_t diagnostics_before = suites_.diagnostics().size();
    current_ = {};
    work();
    Outcome outcome = std::exchange(current_, {});

    std::vector<std::string> failed_calls;
    const std::vector<suites::Diagnostic> diagnostics = suites_.diagnostics();
    for (std::size_t i = diagnostics_before; i < diagnostics.size(); ++i) {
        failed_calls.push_back(diagnostics[i].function + ": " + diagnostics[i].sentence);
    }
    // Causes before their consequences.
    outcome.log.insert(outcome.log.begin(), failed_calls.begin(), failed_calls.end());

    const std::vector<std::string>& steps = project_.undo().step_names();
    if (steps.size() > steps_before) {
        outcome.undo_steps.assign(steps.begin() + static_cast<std::ptrdiff_t>(steps_before), steps.end());
    }
    return outcome;
}

suites::ScriptOutcome Session::run_script(std::string_view text) {
    script::Outcome outcome = engine_.run(text);
    if (outcome.failed) current_.log.push_back("a script failed: " + outcome.error);
    return {.failed = outcome.failed, .result = std::move(outcome.result), .error = std::move(outcome.error)};
}

}  // namespace host::runner
