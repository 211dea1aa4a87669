// The journal of a run, if one is asked for.
#include "run/run_journal.h"

#include <filesystem>

#include "cli/shared/failure.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

// Whether both names mean one file, made already or not.
bool are_same(const std::string& a, const std::string& b) {
    std::error_code error;
    if (fs::equivalent(a, b, error)) return true;
    const fs::path first = fs::weakly_canonical(a, error);
    const fs::path second = fs::weakly_canonical(b, error);
    return !first.empty() && first == second;
}

}  // namespace

RunJournal::RunJournal(const std::string& file, const std::vector<std::string>& others) : name_(file) {
    if (file.empty()) return;
    for (const std::string& other : others) {
        if (are_same(file, other))
            throw Failure(ExitCode::usage, "the journal would overwrite '" + other + "': give it a name of its own");
    }
    try {
        file_ = std::make_unique<host::journal::JournalFile>(file);
    } catch (const host::journal::FileError& error) {
        throw Failure(ExitCode::failed, "the journal '" + file + "' " + error.what());
    }
    writer_ = std::make_unique<host::journal::JournalWriter>([this](std::string_view line) { file_->write(line); });
}

RunJournal::~RunJournal() = default;

void RunJournal::observe(host::runner::Session& session, const std::string& name) {
    if (!writer_) return;
    writer_->begin_session(name);
    session.suites().add_observer(*writer_);
}

void RunJournal::finish() {
    if (!writer_) return;
    writer_->finish();
    if (const std::string problem = file_->problem(); !problem.empty())
        throw Failure(ExitCode::failed, "the journal '" + name_ + "' " + problem);
}

}  // namespace cli
