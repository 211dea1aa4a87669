// Child processes: WebAssembly has none, and says so to whoever wants one.
#include "base/child_process.h"

#include <cstdlib>

namespace host::base {

struct ChildProcess::Parent::Ends {};
struct ChildProcess::State {};

std::string in_words(const ProcessEnd& /*end*/) {
    return "did not begin";
}

void ChildProcess::Parent::say(std::string_view /*bytes*/) const {}

std::atomic<std::size_t>& ChildProcess::Parent::place() const {
    std::abort();  // nobody is the parent of a process that never began
}

bool ChildProcess::Parent::has_children() const {
    return false;
}

void ChildProcess::Parent::open_no_more_files() const {}

void ChildProcess::Parent::wait_for_the_end() const {
    std::abort();
}

void ChildProcess::Parent::finish(int /*number*/) const {
    std::abort();
}

bool ChildProcess::can_start() {
    return false;
}

ChildProcess::ChildProcess(const Work& /*work*/, const ProcessLimits& /*limits*/, Streams /*streams*/) {
    throw NoProcess("WebAssembly has no processes");
}

ChildProcess::~ChildProcess() = default;

std::string& ChildProcess::said() {
    std::abort();
}

std::size_t ChildProcess::place() const {
    std::abort();
}

const std::string& ChildProcess::printed() const {
    std::abort();
}

const std::optional<ProcessEnd>& ChildProcess::end() const {
    std::abort();
}

void ChildProcess::hear() {}

void ChildProcess::hear_any(std::span<ChildProcess* const> /*children*/) {}

const ProcessEnd& ChildProcess::wait() {
    std::abort();
}

}  // namespace host::base
