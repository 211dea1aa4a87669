// Runs plug-ins over one project: entry points, menu items and commands.
#include "runner/session.h"

#include <exception>
#include <utility>

#include "base/memory_watch.h"
#include "suites/error_codes.h"

namespace host::runner {
namespace {

using suites::PluginFunction;

// The version of the plug-in interface that this host claims.
constexpr A_long kInterfaceMajor = 114;
constexpr A_long kInterfaceMinor = 0;

// No plug-in gets this number for a command of its own.
constexpr AEGP_Command kForeignCommand = 1'000'000;

// What an idle hook finds in its answer before it has given one.
constexpr A_long kIdleMilliseconds = 1000;

}  // namespace

Session::Session(model::Project& project, script::Settings& settings, scriptui::DialogDriver& dialogs,
                 const script::Limits& limits)
    : project_(project),
      engine_(
          project, settings, dialogs, [this](const scriptui::Alert& alert) { current_.alerts.push_back(alert); },
          limits),
      suites_(project, {.run_script = [this](std::string_view text) { return run_script(text); },
                        .report =
                            [this, &dialogs](std::string_view plugin, std::string_view text) {
                                current_.reports.emplace_back(text);
                                dialogs.show({std::string(text), std::string(plugin)});
                            }}) {}

VisitResult Session::start(const PluginModule& module) {
    return observe([&] {
        const AEGP_PluginID id = suites_.add_plugin(module.name());
        AEGP_GlobalRefcon& refcon = global_refcons_[id];
        const suites::PluginCall call{.function = PluginFunction::entry_point,
                                      .plugin = id,
                                      .plugin_name = module.name(),
                                      .global_refcon = &refcon,
                                      .major = kInterfaceMajor,
                                      .minor = kInterfaceMinor};
        const A_Err error = visit(call, "its entry point", [&] {
            return module.entry_point()(suites_.basic_suite(), call.major, call.minor, id, &refcon);
        });
        if (error != A_Err_NONE) suites_.drop_plugin(id);
    });
}

VisitResult Session::update_menus() {
    return observe([this] { call_update_menu_hooks(); });
}

VisitResult Session::run_command(AEGP_Command command) {
    return observe([this, command] {
        call_update_menu_hooks();
        const suites::MenuItem* item = suites_.menu_item(command);
        current_.is_enabled = item != nullptr && item->enabled;
        if (current_.is_enabled) call_command_hooks(command);
    });
}

VisitResult Session::pass_foreign_command() {
    return observe([this] { call_command_hooks(kForeignCommand); });
}

VisitResult Session::idle() {
    return observe([this] { call_idle_hooks(); });
}

VisitResult Session::quit() {
    return observe([this] { call_death_hooks(); });
}

void Session::call_update_menu_hooks() {
    suites_.prepare_menus_for_update();
    for (const suites::UpdateMenuHook& hook : suites_.update_menu_hooks()) {
        AEGP_GlobalRefcon& global = global_refcons_[hook.plugin_id];
        const suites::PluginCall call{.function = PluginFunction::update_menu_hook,
                                      .plugin = hook.plugin_id,
                                      .global_refcon = &global,
                                      .hook = reinterpret_cast<const void*>(hook.function),
                                      .refcon = hook.refcon,
                                      .window = AEGP_WindType_TIME_LAYOUT};
        visit(call, "its update-menu hook", [&] { return hook.function(global, hook.refcon, call.window); });
    }
}

void Session::call_command_hooks(AEGP_Command command) {
    for (const suites::CommandHook& hook : suites_.command_hooks()) {
        if (hook.command != AEGP_Command_ALL && hook.command != command) continue;
        A_Boolean handled = 0;
        AEGP_GlobalRefcon& global = global_refcons_[hook.plugin_id];
        const suites::PluginCall call{.function = PluginFunction::command_hook,
                                      .plugin = hook.plugin_id,
                                      .global_refcon = &global,
                                      .hook = reinterpret_cast<const void*>(hook.function),
                                      .refcon = hook.refcon,
                                      .command = command,
                                      .priority = hook.priority,
                                      .already_handled = current_.is_handled,
                                      .handled = &handled};
        visit(call, "its command hook", [&] {
            return hook.function(global, hook.refcon, command, hook.priority, call.already_handled, &handled);
        });
        current_.is_handled = current_.is_handled || handled != 0;
    }
}

void Session::call_idle_hooks() {
    for (const suites::IdleHook& hook : suites_.idle_hooks()) {
        A_long max_sleep = kIdleMilliseconds;
        AEGP_GlobalRefcon& global = global_refcons_[hook.plugin_id];
        const suites::PluginCall call{.function = PluginFunction::idle_hook,
                                      .plugin = hook.plugin_id,
                                      .global_refcon = &global,
                                      .hook = reinterpret_cast<const void*>(hook.function),
                                      .refcon = hook.refcon,
                                      .max_sleep = &max_sleep};
        visit(call, "its idle hook", [&] { return hook.function(global, hook.refcon, &max_sleep); });
    }
}

void Session::call_death_hooks() {
    for (const suites::DeathHook& hook : suites_.death_hooks()) {
        AEGP_GlobalRefcon& global = global_refcons_[hook.plugin_id];
        const suites::PluginCall call{.function = PluginFunction::death_hook,
                                      .plugin = hook.plugin_id,
                                      .global_refcon = &global,
                                      .hook = reinterpret_cast<const void*>(hook.function),
                                      .refcon = hook.refcon};
        visit(call, "its death hook", [&] { return hook.function(global, hook.refcon); });
    }
}

A_Err Session::visit(const suites::PluginCall& facts, const std::string& what, const std::function<A_Err()>& call) {
    const auto complain = [&](const std::string& sentence) {
        current_.log.push_back("plug-in " + suites_.plugin_name(facts.plugin) + ": " + what + ' ' + sentence);
    };
    bool has_thrown = false;
    A_Err error = A_Err_NONE;
    const base::MemoryWatch memory;
    {
        const suites::SuiteHost::Visit visit(suites_, facts);
        try {
            error = call();
            if (error != A_Err_NONE) complain("returned error " + std::to_string(error));
        } catch (const std::exception& exception) {
            error = suites::kInternal;
            complain(std::string("threw an exception: ") + exception.what());
            has_thrown = true;
        } catch (...) {
            error = suites::kInternal;
            complain("threw something that is not an exception");
            has_thrown = true;
        }
        visit.returned(facts, error, has_thrown);
    }
    if (const int open = project_.undo().close_all_groups(); open > 0) {
        complain("left " + std::to_string(open) + (open == 1 ? " undo group" : " undo groups") +
                 " open; the host closed " + (open == 1 ? "it" : "them") + " and kept the changes as one step");
    }
    current_.has_thrown = current_.has_thrown || has_thrown;
    current_.lacked_memory = current_.lacked_memory || memory.was_refused() || error == suites::kOutOfMemory;
    if (!current_.has_failed()) current_.error = error;
    return error;
}

VisitResult Session::observe(const std::function<void()>& work) {
    const std::size_t steps_before = project_.undo().step_names().size();
    const std::size_t diagnostics_before = suites_.diagnostics().size();
    current_ = {};
    work();
    VisitResult result = std::exchange(current_, {});

    std::vector<std::string> failed_calls;
    const std::vector<suites::Diagnostic> diagnostics = suites_.diagnostics();
    for (std::size_t i = diagnostics_before; i < diagnostics.size(); ++i) {
        failed_calls.push_back(diagnostics[i].function + ": " + diagnostics[i].sentence);
    }
    // Causes before consequences.
    result.log.insert(result.log.begin(), failed_calls.begin(), failed_calls.end());

    const std::vector<std::string>& steps = project_.undo().step_names();
    if (steps.size() > steps_before) {
        result.undo_steps.assign(steps.begin() + static_cast<std::ptrdiff_t>(steps_before), steps.end());
    }
    return result;
}

suites::ScriptReply Session::run_script(std::string_view text) {
    if (current_.scripts_took_too_long)
        return {.failed = true, .result = {}, .error = "An earlier script took too long."};
    script::ScriptResult result = engine_.run(text);
    current_.scripts_took_too_long = result.took_too_long;
    current_.lacked_memory = current_.lacked_memory || result.lacked_memory;
    if (result.failed) current_.log.push_back("a script failed: " + result.error);
    return {.failed = result.failed, .result = std::move(result.result), .error = std::move(result.error)};
}

}  // namespace host::runner
