// The command exflate.
#include <csignal>
#include <exception>

#include "cli/check_command.h"
#include "cli/console.h"
#include "cli/dialog_command.h"
#include "cli/documents.h"
#include "cli/file_io.h"
#include "cli/list_command.h"
#include "cli/options.h"
#include "cli/replay_command.h"
#include "cli/report_command.h"
#include "cli/run_command.h"
#include "runner/utf8_locale.h"

namespace {

using cli::Console;
using cli::ExitCode;

ExitCode obey(const cli::RunOptions& options, const Console& console) {
    return cli::run(options, console);
}

ExitCode obey(const cli::ListOptions& options, const Console& console) {
    return cli::list(options, console);
}

ExitCode obey(const cli::DialogOptions& options, const Console& console) {
    return cli::draw_dialog(options, console);
}

ExitCode obey(const cli::CheckOptions& options, const Console& console) {
    return cli::check(options, console);
}

ExitCode obey(const cli::ReplayOptions& options, const Console& console) {
    return cli::replay(options, console);
}

ExitCode obey(const cli::ReportOptions& options, const Console& console) {
    return cli::report(options, console);
}

ExitCode obey(const cli::Information& information, const Console& console) {
    try {
        cli::write_result(std::string(cli::kStandardStream), information.text);
        return ExitCode::done;
    } catch (const cli::Failure& failure) {
        console.say(Console::Tone::error, "exflate", failure.what());
        return failure.code();
    }
}

ExitCode obey(const cli::UsageProblem& problem, const Console& console) {
    console.say(Console::Tone::error, "exflate", problem.sentence + " (exflate --help tells all)");
    return ExitCode::usage;
}

}  // namespace

int main(int argc, char** argv) {
    const Console console = Console::for_this_process();
    try {
        std::signal(SIGPIPE, SIG_IGN);  // a reader that went away is an error of writing
        if (!host::runner::use_utf8_locale()) {
            console.say(Console::Tone::warning, "exflate",
                        "the system has no UTF-8 locale; names beyond ASCII may suffer");
        }
        const cli::Request request = cli::parse_arguments({argv + 1, argv + argc});
        return static_cast<int>(std::visit([&](const auto& what) { return obey(what, console); }, request));
    } catch (const std::exception& problem) {
        console.say(Console::Tone::error, "exflate", problem.what());
        return static_cast<int>(ExitCode::failed);
    }
}
