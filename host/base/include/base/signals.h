// Signals of the process.
#pragma once

#include <memory>
#include <string>

namespace host::base {

// A reader that went away and a file that grows beyond what is allowed become errors of the write that meets them.
void ignore_failed_write_signals();

// While it lives, the usual ways to end a program wait for this thread, so that no temporary file stays behind.
class BlockTermination {
  public:
    BlockTermination();
    ~BlockTermination();
    BlockTermination(const BlockTermination&) = delete;
    BlockTermination& operator=(const BlockTermination&) = delete;

  private:
    struct State;
    std::unique_ptr<State> before_;
};

}  // namespace host::base
