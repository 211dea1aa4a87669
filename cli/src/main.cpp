// The command exflate.
#include <exception>

#include "base/signals.h"
#include "cli/arguments/parser.h"
#include "cli/shared/console.h"
#include "runner/utf8_locale.h"

namespace {

using cli::Console;
using cli::ExitCode;

ExitCode handle(const cli::Request& request, const Console& console) {
    return request.command->run(request.options, console);
}

ExitCode handle(const cli::UsageProblem& problem, const Console& console) {
    console.say(Console::Tone::error, "exflate", problem.sentence + " (see " + problem.help + ")");
    return ExitCode::usage;
}

}  // namespace

int main(int argc, char** argv) {
    const Console console = Console::for_this_process();
    try {
        host::base::ignore_failed_write_signals();
        if (!host::runner::use_utf8_locale()) {
            console.say(Console::Tone::warning, "exflate",
                        "the system has no UTF-8 locale; names beyond ASCII may suffer");
        }
        const auto request = cli::parse_arguments({argv + 1, argv + argc});
        return static_cast<int>(std::visit([&](const auto& what) { return handle(what, console); }, request));
    } catch (const cli::Failure& failure) {
        print_failure(console, "exflate", failure);
        return static_cast<int>(failure.code());
    } catch (const std::exception& problem) {
        console.say(Console::Tone::error, "exflate", problem.what());
        return static_cast<int>(ExitCode::failed);
    }
}
