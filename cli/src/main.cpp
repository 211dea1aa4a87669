// The command exflate.
#include "base/files.h"
#include "base/signals.h"
#include "cli/arguments/parser.h"
#include "cli/shared/console.h"
#include "cli/shared/folders.h"
#include "runner/utf8_locale.h"
#include "shared/plugin_process.h"

namespace {

using cli::Console;
using cli::ExitCode;

ExitCode handle(const cli::Request& request, const Console& all) {
    const Console console = request.options.quiet ? all.quiet() : all;
    return cli::guarded(console, "exflate", [&] {
        const cli::Options options =
            takes_folders(*request.command) ? cli::with_files_of_folders(request.options) : request.options;
        return cli::keep_plugin_apart(options, console, [&] {
            return cli::guarded(console, "exflate", [&] { return request.command->run(options, console); });
        });
    });
}

ExitCode handle(const cli::UsageProblem& problem, const Console& console) {
    console.say(Console::Tone::error, "exflate", problem.sentence + " (see " + problem.help + ")");
    return ExitCode::usage;
}

}  // namespace

int main(int argc, char** argv) {
    const Console console = Console::for_this_process();
    const auto work = [&] {
        host::base::keep_places_of_standard_streams();
        host::base::ignore_failed_write_signals();
        if (!host::runner::use_utf8_locale()) {
            console.say(Console::Tone::warning, "exflate",
                        "the system has no UTF-8 locale; names beyond ASCII may suffer");
        }
        const auto request = cli::parse_arguments({argv + 1, argv + argc});
        return std::visit([&](const auto& what) { return handle(what, console); }, request);
    };
    return static_cast<int>(cli::guarded(console, "exflate", work));
}
