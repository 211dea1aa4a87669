// The journal of a run, if one is wanted.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/files.h"
#include "journal/writer.h"
#include "runner/session.h"

namespace cli {

class RunJournal {
  public:
    // Creates the file; does nothing for an empty name. Throws Failure: usage if the file is one of `others`, which are
    // also read or written, failed if it cannot be created.
    RunJournal(const std::string& file, const std::vector<std::string>& others);
    ~RunJournal();
    RunJournal(const RunJournal&) = delete;
    RunJournal& operator=(const RunJournal&) = delete;

    // To be called before plug-ins are started. The journal outlives the session.
    void observe(host::runner::Session& session, const std::string& name);
    // Ends the journal. Throws Failure (failed) if it could not be written in full.
    void finish();

  private:
    std::string name_;
    std::unique_ptr<host::base::LineFile> file_;
    std::unique_ptr<host::journal::JournalWriter> writer_;
};

}  // namespace cli
