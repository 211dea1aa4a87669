// Journals where there are no files that outlive a crash and no processes to replay in: every wish is refused in one
// sentence.
#include <stdexcept>

#include "journal/journal.h"
#include "journal/replay.h"
#include "journal/writer.h"

namespace host::journal {
namespace {

[[noreturn]] void refuse() {
    throw std::runtime_error(
        "WebAssembly keeps and replays no journals, for it has no processes; use the native command");
}

}  // namespace

class JournalWriter::Scribe {};

JournalWriter::JournalWriter(Sink /*sink*/) {
    refuse();
}

JournalWriter::~JournalWriter() = default;

void JournalWriter::begin_session(std::string_view /*name*/) {}

void JournalWriter::finish() {}

void JournalWriter::entering(const suites::PluginCall& /*call*/) {}

void JournalWriter::left(const suites::PluginCall& /*call*/, A_Err /*result*/, bool /*has_thrown*/) {}

std::optional<A_Err> JournalWriter::before(const suites::SuiteCall& /*call*/) {
    return {};
}

void JournalWriter::after(const suites::SuiteCall& /*call*/) {}

std::variant<Journal, Damage> read(std::string_view /*bytes*/) {
    refuse();
}

ReplayVerdict replay(const Journal& /*journal*/, AEGP_PluginInitFunc /*entry_point*/,
                     std::chrono::seconds /*longest*/) {
    refuse();
}

}  // namespace host::journal
