// The journal of a run, if one is asked for.
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
    // Makes the file; nothing at all for an empty name. Throws Failure: usage if the file is one of `others`, which are
    // read or written too, failed if it cannot be made.
    RunJournal(const std::string& file, const std::vector<std::string>& others);
    ~RunJournal();
    RunJournal(const RunJournal&) = delete;
    RunJournal& operator=(const RunJournal&) = delete;

    // To be called before plug-ins are started. The journal outlives the session.
    void observe(host::runner::Session& session, const std::string& name);
    // Ends the journal. Throws Failure (failed) if not all of it could be written.
    void finish();

  private:
    std::string name_;
    std::unique_ptr<host::base::LineFile> file_;
    std::unique_ptr<host::journal::JournalWriter> writer_;
};

}  // namespace cli
