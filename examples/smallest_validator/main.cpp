// A validator of one's own in a few lines: runs every command of a plug-in on a composition of three layers, undoes it,
// and says what it left behind.
#include <iostream>
#include <stdexcept>

#include "runner/session.h"
#include "runner/utf8_locale.h"
#include "suites/fault_injector.h"

namespace {

using namespace host;

// Cancels every dialog.
struct NobodyThere : scriptui::DialogDriver {
    void drive(scriptui::Window&) override {}
};

// One life of the plug-in over a project of its own; the n-th call of its command fails, 0 for none.
std::uint64_t try_command(const runner::PluginModule& plugin, std::size_t item, std::uint64_t failing_call) {
    model::Project project;
    model::Comp& comp = project.add_comp("Main");
    comp.load_timing(25, model::from_seconds(10));
    for (const char* name : {"Low", "Middle", "High"}) comp.create_null(name, {});
    project.open_comp(&comp);
    comp.select(comp.stack().to_vector());
    project.undo().clear();

    auto settings = script::Settings::in_memory();
    NobodyThere nobody;
    runner::Session session(project, settings, nobody);
    if (session.start(plugin).has_failed()) throw std::runtime_error("the plug-in does not start");
    session.update_menus();
    suites::FaultInjector faults;
    if (failing_call > 0) faults.fail_call(failing_call, 4711);
    session.suites().add_observer(faults);
    const runner::VisitResult outcome = session.run_command(session.menu_items().at(item).command);

    const std::string where = failing_call > 0 ? "call " + std::to_string(failing_call) + " fails: " : "";
    for (const std::string& sentence : outcome.log) std::cout << where << sentence << '\n';
    for (const auto& handle : session.suites().ledger().never_disposed)
        std::cout << where << "a " << name_of(handle.kind) << " of " << handle.made_by << " is left\n";
    if (outcome.undo_steps.size() > 1) std::cout << where << outcome.undo_steps.size() << " steps to undo\n";
    return failing_call == 0 ? faults.calls_seen() : 0;
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 2) throw std::runtime_error("usage: smallest_validator PLUG-IN");
    runner::use_utf8_locale();
    const runner::PluginModule plugin(argv[1]);
    const std::uint64_t calls = try_command(plugin, 0, 0);
    for (std::uint64_t n = 1; n <= calls; ++n) try_command(plugin, 0, n);
    std::cout << calls + 1 << " runs\n";
    return 0;
} catch (const std::exception& problem) {
    std::cerr << problem.what() << '\n';
    return 1;
}
