// Work in a process of its own, by fork.
#include "base/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

#include "descriptor.h"
#include "living_children.h"
#include "process_limits.h"

namespace host::base {
namespace {

using Clock = std::chrono::steady_clock;

// What both processes see.
struct Shared {
    std::atomic<std::size_t> place{0};
    std::atomic<bool> has_finished{false};
    std::atomic<int> number{0};
    std::atomic<bool> is_out_of_memory{false};
    std::atomic<std::size_t> memory_at_start{0};  // resident, bytes
};
static_assert(std::atomic<std::size_t>::is_always_lock_free && std::atomic<int>::is_always_lock_free &&
              std::atomic<bool>::is_always_lock_free);

[[noreturn]] void refuse_start() {
    throw NoProcess(std::strerror(errno));
}

class SharedPage {
  public:
    SharedPage() : page_(::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) {
        if (page_ == MAP_FAILED) refuse_start();
        shared_ = new (page_) Shared;
    }
    ~SharedPage() { ::munmap(page_, sizeof(Shared)); }
    SharedPage(const SharedPage&) = delete;
    SharedPage& operator=(const SharedPage&) = delete;

    Shared& operator*() const { return *shared_; }
    Shared* operator->() const { return shared_; }

  private:
    void* page_;
    Shared* shared_;
};

struct Pipe {
    Pipe() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) refuse_start();
        from = Descriptor(ends[0]);
        to = Descriptor(ends[1]);
    }
    Descriptor from;
    Descriptor to;
};

// In the child: the streams go where they shall.
void lead_streams(ChildProcess::Streams streams, int says) {
    if (streams == ChildProcess::Streams::same) return;
    const bool says_errors = streams == ChildProcess::Streams::errors_are_said;
    const Descriptor nowhere(says_errors ? -1 : ::open("/dev/null", O_RDWR | O_CLOEXEC));
    const int to = says_errors ? says : nowhere.get();
    if (to < 0) return;
    ::dup2(to, STDERR_FILENO);
    if (!says_errors) ::dup2(to, STDOUT_FILENO);
}

}  // namespace

struct ChildProcess::Parent::Ends {
    Shared& shared;
    int says;
};

struct ChildProcess::State {
    SharedPage shared;
    Pipe says;
    pid_t process = -1;
    std::size_t registered = 0;
    ProcessLimits limits;
    std::optional<Clock::time_point> latest;
    bool was_ended_late = false;
    std::string said;
    std::optional<ProcessEnd> end;

    // Until when there is time, in the form of poll().
    int milliseconds_left() const {
        if (!latest) return -1;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*latest - Clock::now()).count();
        return static_cast<int>(std::clamp<long long>(left, 0, 1 << 30));
    }

    void receive() {
        if (read_more(says.from.get(), said) != ReadResult::some) bury();
    }

    void end_if_late() {
        if (!latest || was_ended_late || Clock::now() < *latest) return;
        was_ended_late = true;
        ::kill(process, SIGKILL);
    }

    // The process has closed its end; what it has not closed by ending it may take its time for.
    void bury() {
        says.from.close();
        int status = 0;
        rusage used{};
        while (latest && !was_ended_late && wait_for(status, used, WNOHANG) == 0) {
            ::poll(nullptr, 0, 1);
            end_if_late();
        }
        if (process > 0) wait_for(status, used, 0);
        end = judge(status, used);
    }

    pid_t wait_for(int& status, rusage& used, int flags) {
        if (process <= 0) return process;
        const pid_t ended = retry_on_eintr([&] { return ::wait4(process, &status, flags, &used); });
        if (ended != 0) {
            forget_child(registered);
            process = -1;
        }
        return ended;
    }

    ProcessEnd judge(int status, const rusage& used) const {
        using Kind = ProcessEnd::Kind;
        ProcessEnd result;
        result.processor_time = processor_time_of(used);
        if (shared->has_finished) {
            result.number = shared->number;
        } else if (shared->is_out_of_memory || (WIFSIGNALED(status) && has_used_up_memory(used))) {
            result.kind = Kind::out_of_memory;
        } else if (was_ended_late) {
            result.kind = Kind::out_of_time;
        } else if (WIFSIGNALED(status)) {
            result.number = WTERMSIG(status);
            const bool is_slow =
                result.number == SIGXCPU || (limits.processor_time && result.processor_time >= *limits.processor_time);
            result.kind = is_slow ? Kind::out_of_processor_time : Kind::crashed;
        } else {
            result.kind = Kind::exited;
            result.number = WEXITSTATUS(status);
        }
        return result;
    }

    // A process that was refused memory may crash over it.
    bool has_used_up_memory(const rusage& used) const {
        if (!limits.memory) return false;
        const std::size_t most = static_cast<std::size_t>(used.ru_maxrss) << 10;
        return most > shared->memory_at_start && most - shared->memory_at_start > *limits.memory / 4 * 3;
    }

    [[noreturn]] void work(const Work& work, Streams streams) {
        says.from.close();
        forget_all_children();
        lead_streams(streams, says.to.get());
        const Parent::Ends ends{*shared, says.to.get()};
        const Parent parent(ends);
        shared->memory_at_start = resident_memory();
        apply_limits(limits, [&page = *shared]() -> void {
            page.is_out_of_memory = true;
            ::_exit(1);
        });
        try {
            parent.finish(work(parent));
        } catch (const std::bad_alloc&) {
            shared->is_out_of_memory = true;
        } catch (...) {
            // Told by the status.
        }
        ::_exit(1);
    }
};

void ChildProcess::Parent::say(std::string_view bytes) const {
    if (!write_all(ends_.says, bytes)) ::_exit(1);
}

std::atomic<std::size_t>& ChildProcess::Parent::place() const {
    return ends_.shared.place;
}

void ChildProcess::Parent::wait_for_the_end() const {
    for (;;) ::pause();
}

void ChildProcess::Parent::finish(int number) const {
    ends_.shared.number = number;
    ends_.shared.has_finished = true;
    ::_exit(0);
}

ChildProcess::ChildProcess(const Work& work, const ProcessLimits& limits, Streams streams)
    : state_(std::make_unique<State>()) {
    state_->limits = limits;
    state_->process = fork_child(state_->registered);
    if (state_->process == 0) state_->work(work, streams);
    if (state_->process < 0) refuse_start();
    state_->says.to.close();
    if (limits.time) state_->latest = Clock::now() + *limits.time;
}

ChildProcess::~ChildProcess() {
    if (state_->process <= 0) return;
    ::kill(state_->process, SIGKILL);
    state_->bury();
}

std::string& ChildProcess::said() {
    return state_->said;
}

std::size_t ChildProcess::place() const {
    return state_->shared->place;
}

const std::optional<ProcessEnd>& ChildProcess::end() const {
    return state_->end;
}

void ChildProcess::hear() {
    ChildProcess* const self = this;
    hear_any({&self, 1});
}

void ChildProcess::hear_any(std::span<ChildProcess* const> children) {
    std::vector<pollfd> ends;
    int longest = -1;
    for (const ChildProcess* child : children) {
        ends.push_back({child->state_->says.from.get(), POLLIN, 0});
        const int left = child->state_->was_ended_late ? -1 : child->state_->milliseconds_left();
        if (left >= 0) longest = longest < 0 ? left : std::min(longest, left);
    }
    if (::poll(ends.data(), ends.size(), longest) < 0) return;  // interrupted
    for (std::size_t i = 0; i < children.size(); ++i) {
        State& state = *children[i]->state_;
        state.end_if_late();
        if (ends[i].revents != 0) state.receive();
    }
}

const ProcessEnd& ChildProcess::wait() {
    while (!end()) hear();
    return *end();
}

std::string in_words(const ProcessEnd& end) {
    switch (end.kind) {
        case ProcessEnd::Kind::exited:
            return "ended the program with code " + std::to_string(end.number);
        case ProcessEnd::Kind::crashed:
            return std::string("crashed (") + ::strsignal(end.number) + ')';
        case ProcessEnd::Kind::out_of_processor_time:
            return "took too much of the processor's time";
        case ProcessEnd::Kind::out_of_time:
            return "took too long";
        case ProcessEnd::Kind::out_of_memory:
            return "took too much memory";
        case ProcessEnd::Kind::finished:
            break;
    }
    return "came to its end";
}

}  // namespace host::base
