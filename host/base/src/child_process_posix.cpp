// Work in a process of its own, by fork.
#include "base/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

#include "descriptor.h"
#include "family_rename.h"
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

// Through which the child asks its parent to rename.
struct Requests {
    Requests() {
        int ends[2];
        if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) refuse_start();
        parents = Descriptor(ends[0]);
        childs = Descriptor(ends[1]);
    }
    Descriptor parents;
    Descriptor childs;
};

// At most this much is kept of what a process prints.
constexpr std::size_t kMostPrinted = 64 << 10;

// How often a process is polled whose descendants may hold its pipes open.
constexpr int kLookMilliseconds = 50;

// In the child: redirects its standard streams.
void lead_streams(ChildProcess::Streams streams, int says, int prints) {
    if (streams == ChildProcess::Streams::same) return;
    if (streams == ChildProcess::Streams::apart) {
        ::dup2(prints, STDERR_FILENO);
        ::dup2(prints, STDOUT_FILENO);
        return;
    }
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
    pid_t process;

    // The work may have copied its process: the copy is none of the parent's.
    void end_copies() const {
        if (::getpid() != process) ::_exit(1);
    }
};

struct ChildProcess::State {
    SharedPage shared;
    Pipe says;
    Requests requests;
    pid_t process = -1;
    std::size_t registered = 0;
    ProcessLimits limits;
    std::optional<Clock::time_point> latest;
    bool was_ended_late = false;
    std::string said;
    std::optional<Pipe> prints;  // of a process whose streams are kept apart
    std::string printed;
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

    // Whatever is there of what the process prints; its beginning is kept.
    void receive_printed() {
        if (!prints) return;
        std::string more;
        ReadResult result = ReadResult::some;
        while (result == ReadResult::some && more.size() < kMostPrinted) result = read_more(prints->from.get(), more);
        printed += more.substr(0, kMostPrinted - printed.size());
        if (result == ReadResult::end) prints->from.close();
    }

    // A process whose descendants keep its pipes open has ended all the same.
    void look() {
        if (!prints || end) return;
        siginfo_t info{};
        if (::waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid == 0)
            return;
        ::kill(-process, SIGKILL);
        while (!end && read_more(says.from.get(), said) == ReadResult::some) continue;
        bury();
    }

    void kill_it() const { ::kill(prints ? -process : process, SIGKILL); }

    void end_if_late() {
        if (!latest || was_ended_late || Clock::now() < *latest) return;
        was_ended_late = true;
        kill_it();
    }

    // The process has closed its end of the pipe. If it did so without ending, it may still run for a while.
    void bury() {
        says.from.close();
        requests.parents.close();
        const pid_t group = process;
        int status = 0;
        rusage used{};
        while (latest && !was_ended_late && wait_for(status, used, WNOHANG) == 0) {
            ::poll(nullptr, 0, 1);
            end_if_late();
        }
        if (process > 0) wait_for(status, used, 0);
        if (prints && group > 0) {
            ::kill(-group, SIGKILL);
            end_orphans();
        }
        receive_printed();
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
        // A tool that runs with the program, such as a memory checker, may change the exit code.
        const bool is_as_left = WIFEXITED(status) && WEXITSTATUS(status) == 0;
        if (shared->has_finished && is_as_left) {
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
        requests.parents.close();
        ask_parent_to_rename(requests.childs.get());
        forget_all_children();
        if (prints) {
            ::setpgid(0, 0);
            take_in_orphans();
        }
        lead_streams(streams, says.to.get(), prints ? prints->to.get() : -1);
        const Parent::Ends ends{*shared, says.to.get(), ::getpid()};
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
    ends_.end_copies();
    if (!write_all(ends_.says, bytes)) ::_exit(1);
}

std::atomic<std::size_t>& ChildProcess::Parent::place() const {
    return ends_.shared.place;
}

bool ChildProcess::Parent::has_children() const {
    pid_t ended = 0;
    do ended = ::waitpid(-1, nullptr, WNOHANG);
    while (ended > 0 || (ended < 0 && errno == EINTR));
    return ended == 0;
}

void ChildProcess::Parent::open_no_more_files() const {
    forbid_opening_files();
}

void ChildProcess::Parent::wait_for_the_end() const {
    for (;;) ::pause();
}

void ChildProcess::Parent::finish(int number) const {
    ends_.end_copies();
    ends_.shared.number = number;
    ends_.shared.has_finished = true;
    ::_exit(0);
}

bool ChildProcess::can_start() {
    return true;
}

ChildProcess::ChildProcess(const Work& work, const ProcessLimits& limits, Streams streams)
    : state_(std::make_unique<State>()) {
    state_->limits = limits;
    if (streams == Streams::apart) {
        take_in_orphans();
        state_->prints.emplace();
        for (const int from : {state_->says.from.get(), state_->prints->from.get()}) ::fcntl(from, F_SETFL, O_NONBLOCK);
    }
    state_->process = fork_child(state_->registered);
    if (state_->process == 0) state_->work(work, streams);
    if (state_->process < 0) refuse_start();
    state_->says.to.close();
    state_->requests.childs.close();
    if (state_->prints) {
        ::setpgid(state_->process, state_->process);  // both sides do it: neither may be too late
        state_->prints->to.close();
    }
    if (limits.time) state_->latest = Clock::now() + *limits.time;
}

ChildProcess::~ChildProcess() {
    if (state_->process <= 0) return;
    state_->kill_it();
    state_->bury();
}

std::string& ChildProcess::said() {
    return state_->said;
}

const std::string& ChildProcess::printed() const {
    return state_->printed;
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
    constexpr std::size_t kEnds = 3;  // of each
    std::vector<pollfd> ends;
    int longest = -1;
    for (const ChildProcess* child : children) {
        const State& state = *child->state_;
        ends.push_back({state.says.from.get(), POLLIN, 0});
        ends.push_back({state.prints ? state.prints->from.get() : -1, POLLIN, 0});
        ends.push_back({state.requests.parents.get(), POLLIN, 0});
        int left = state.was_ended_late ? -1 : state.milliseconds_left();
        if (state.prints) left = left < 0 ? kLookMilliseconds : std::min(left, kLookMilliseconds);
        if (left >= 0) longest = longest < 0 ? left : std::min(longest, left);
    }
    if (::poll(ends.data(), ends.size(), longest) < 0) return;  // interrupted
    for (std::size_t i = 0; i < children.size(); ++i) {
        State& state = *children[i]->state_;
        state.end_if_late();
        if (ends[kEnds * i + 1].revents != 0) state.receive_printed();
        if (ends[kEnds * i + 2].revents != 0 && !rename_for_child(state.requests.parents.get()))
            state.requests.parents.close();
        if (ends[kEnds * i].revents != 0)
            state.receive();
        else
            state.look();
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
