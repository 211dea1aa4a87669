// Work on several files at once, each in a process of its own: the plug-in and the script engine are for one thread,
// and a plug-in that crashes takes only its own file along.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "base/files.h"
#include "cli/shared/failure.h"

namespace cli {

// How the work on one file ended.
struct Ended {
    std::string said;              // everything it wrote to standard error
    std::optional<ExitCode> code;  // none if it did not finish
    std::string problem;           // why it did not, as a sentence without a subject
    std::string result;            // what the work returned
};

struct Done {
    ExitCode code = ExitCode::done;
    std::string result;  // any bytes
};

struct Workers {
    std::size_t most_at_once = 1;
    // Runs in the file's process; an exception from it ends the file's work like a crash.
    std::function<Done(std::size_t)> work;
    // Runs in the calling process, in the order of the files, for each as soon as it and all before it have ended.
    std::function<void(std::size_t, const Ended&)> tell;
    // Runs in the calling process whenever another file has ended.
    std::function<void(std::size_t)> progress;
};

// Whether this system has processes.
bool can_work_at_once();

// Returns when the work on all `count` files has ended.
void work_on_all(std::size_t count, const Workers& workers);

// Tells whether the work on two files would read or write the same file, so that they cannot be worked on at once.
class FileUse {
  public:
    // Notes that the work on `file` uses the name; false if that on another file already does. Names of files that do
    // not exist count as different.
    bool note(std::size_t file, const std::string& name);

  private:
    std::map<host::base::FileIdentity, std::size_t> known_;
};

}  // namespace cli
