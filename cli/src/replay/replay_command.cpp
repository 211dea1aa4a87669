// `exflate replay`: plays a journal to the plug-in.
#include "commands.h"

#include "cli/shared/animation_file.h"
#include "journal/journal.h"
#include "journal/replay.h"
#include "shared/installed_parts.h"

namespace cli {
namespace {

using host::journal::ReplayVerdict;
using Tone = Console::Tone;

std::string place(std::size_t line) {
    return ':' + std::to_string(line);
}

host::journal::Journal journal_from(const std::string& bytes) {
    const auto result = host::journal::read(bytes);
    if (const auto* damage = std::get_if<host::journal::Damage>(&result))
        throw Failure(ExitCode::bad_input, damage->sentence, place(damage->line));
    return std::get<host::journal::Journal>(result);
}

ExitCode tell(const ReplayVerdict& verdict, const std::string& name, const Console& console) {
    switch (verdict.kind) {
        case ReplayVerdict::Kind::same:
            console.say(Tone::good, name, verdict.sentence);
            return ExitCode::done;
        case ReplayVerdict::Kind::same_to_cut:
            console.say(Tone::warning, name, verdict.sentence);
            return ExitCode::done;
        case ReplayVerdict::Kind::differs:
            console.say(Tone::error, name + place(verdict.line), verdict.sentence);
            return ExitCode::differs;
        case ReplayVerdict::Kind::damaged:
            break;
    }
    throw Failure(ExitCode::bad_input, "this line cannot be played: " + verdict.sentence, place(verdict.line));
}

}  // namespace

ExitCode replay(const Options& options, const Console& console) {
    const std::string name = shown_name(options.file());
    return guarded(console, name, [&] {
        const std::string bytes = read_input(options.file());
        const host::journal::Journal journal = journal_from(bytes);
        const host::runner::PluginModule plugin = load_plugin();
        return tell(host::journal::replay(journal, plugin.entry_point()), name, console);
    });
}

}  // namespace cli
