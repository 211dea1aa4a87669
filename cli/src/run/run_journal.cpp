// The journal of a run, if one is wanted.
#include "run/run_journal.h"

#include <filesystem>

#include "cli/shared/failure.h"

namespace cli {
namespace {

void refuse_same_file(const std::string& file, const std::vector<std::string>& others) {
    for (const std::string& other : others) {
        if (host::base::are_same_file(file, other))
            throw Failure(ExitCode::usage, "the journal would overwrite '" + other + "': give it a name of its own");
    }
}

}  // namespace

RunJournal::RunJournal(const std::string& file, const std::vector<std::string>& others) : name_(file) {
    if (file.empty()) return;
    refuse_same_file(file, others);
    const bool is_new = !host::base::identity_of(file);
    try {
        file_ = std::make_unique<host::base::LineFile>(file);
    } catch (const host::base::FileError& error) {
        throw Failure(ExitCode::failed, "the journal '" + file + "' " + error.what());
    }
    // Different names may be the same to the file system, which can tell now that the file exists.
    try {
        refuse_same_file(file, others);
    } catch (const Failure&) {
        std::error_code error;
        if (is_new) std::filesystem::remove(std::filesystem::canonical(file, error), error);
        throw;
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
