// Replays in a child process.
#include "journal/replay.h"

#include <stdexcept>

#include "base/child_process.h"
#include "replay/difference.h"
#include "replay/replay_host.h"

namespace host::journal {
namespace {

using base::ChildProcess;

// A verdict on its way: its kind is the number that the child finishes with, "LINE SENTENCE" what it says.
[[noreturn]] void tell(const ChildProcess::Parent& parent, const ReplayVerdict& verdict) {
    parent.say(std::to_string(verdict.line) + ' ' + verdict.sentence);
    parent.finish(static_cast<int>(verdict.kind));
}

ReplayVerdict told(const std::string& said, int kind) {
    const std::size_t blank = said.find(' ');
    return {static_cast<ReplayVerdict::Kind>(kind), std::stoul(said.substr(0, blank)), said.substr(blank + 1)};
}

// For a child that went without a word.
ReplayVerdict verdict_on_end(const Journal& journal, std::size_t place, const std::string& end) {
    if (place >= journal.lines.size()) {
        return {ReplayVerdict::Kind::same_to_cut, journal.last_line,
                "the journal is cut after line " + std::to_string(journal.last_line) +
                    "; up to there the plug-in did the same, and there it " + end};
    }
    const JournalLine& line = journal.lines[place];
    return {ReplayVerdict::Kind::differs, line.line_number,
            expected_got(in_words(line), "nothing: the plug-in " + end)};
}

}  // namespace

ReplayVerdict replay(const Journal& journal, AEGP_PluginInitFunc entry_point, std::chrono::seconds longest) try {
    const auto work = [&](const ChildProcess::Parent& parent) -> int {
        ReplayHost host(journal, entry_point, parent.place(),
                        [&](const ReplayVerdict& verdict) { tell(parent, verdict); });
        host.play();
    };
    ChildProcess child(work, {.processor_time = longest, .time = 3 * longest});
    const base::ProcessEnd& end = child.wait();
    return end.kind == base::ProcessEnd::Kind::finished ? told(child.said(), end.number)
                                                        : verdict_on_end(journal, child.place(), in_words(end));
} catch (const base::NoProcess& reason) {
    throw std::runtime_error(std::string("the plug-in cannot be run: no process: ") + reason.what());
}

}  // namespace host::journal
