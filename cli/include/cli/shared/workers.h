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
    std::string said;              // all it wrote to standard error
    std::optional<ExitCode> code;  // none when it did not come to its end
    std::string problem;           // why there is none, as a sentence without a subject
    std::string result;            // what the work gave
};

struct Done {
    ExitCode code = ExitCode::done;
    std::string result;  // any bytes
};

struct Workers {
    std::size_t most_at_once = 1;
    // In the process of the file; an exception that leaves it ends the file's work like a crash.
    std::function<Done(std::size_t)> work;
    // In the calling process, in the order of the files, each as soon as it and all before it have ended.
    std::function<void(std::size_t, const Ended&)> tell;
    // In the calling process, whenever the number of those that have ended changes.
    std::function<void(std::size_t)> progress;
};

// Whether this system can do it.
bool can_work_at_once();

// Returns when the work on all `count` files has ended.
void work_on_all(std::size_t count, const Workers& workers);

// Finds out whether what one file's work reads or writes is also another's: then they have to come one after another.
class FileUse {
  public:
    // `file` of those that are worked on uses the name; false if another one already does. Names of what does not exist
    // count as different.
    bool note(std::size_t file, const std::string& name);

  private:
    std::map<host::base::FileIdentity, std::size_t> known_;
};

}  // namespace cli
