// Processes for files, by fork: the plug-in is loaded once and each worker begins with it.
#include "cli/workers.h"

#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

namespace cli {
namespace {

// Of a worker that came to its end, plus its code: a plug-in that ends the process gives another status.
constexpr int kWhole = 64;

struct Worker {
    std::size_t file;
    pid_t process;
    int says;  // the end of a pipe
};

[[noreturn]] void be_worker(const Workers& workers, std::size_t file, int says) {
    try {
        if (::dup2(says, STDERR_FILENO) >= 0) ::_exit(kWhole + static_cast<int>(workers.work(file)));
    } catch (...) {
        // Told by the status.
    }
    ::_exit(1);
}

Ended judged(int status, std::string said) {
    Ended ended{std::move(said), {}, {}};
    if (WIFEXITED(status) && WEXITSTATUS(status) >= kWhole) {
        ended.code = static_cast<ExitCode>(WEXITSTATUS(status) - kWhole);
    } else if (WIFSIGNALED(status)) {
        ended.problem = std::string("the process that worked on it crashed: ") + ::strsignal(WTERMSIG(status));
    } else {
        ended.problem = "the process that worked on it ended in the middle";
    }
    return ended;
}

class Team {
  public:
    Team(std::size_t count, const Workers& workers) : workers_(workers), ended_(count) {}

    void work() {
        workers_.progress(0);
        while (told_ < ended_.size()) {
            while (next_ < ended_.size() && running_.size() < workers_.most_at_once) start(next_++);
            if (!running_.empty()) listen();
            for (; told_ < ended_.size() && ended_[told_]; ++told_) {
                workers_.tell(told_, *ended_[told_]);
                ended_[told_].emplace();  // what was said needs no place any more
            }
        }
    }

  private:
    void start(std::size_t file) {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0) return end(file, not_started());
        const pid_t process = ::fork();
        if (process == 0) be_worker(workers_, file, ends[1]);
        const Ended reason = not_started();  // if so; the calls below have errors of their own
        ::close(ends[1]);
        if (process < 0) {
            ::close(ends[0]);
            return end(file, reason);
        }
        running_.push_back({file, process, ends[0]});
        said_.emplace_back();
    }

    static Ended not_started() {
        return {"", {}, std::string("no process for it can be started: ") + std::strerror(errno)};
    }

    void end(std::size_t file, Ended ended) {
        ended_[file] = std::move(ended);
        workers_.progress(++ended_count_);
    }

    // Waits until a worker says something or ends.
    void listen() {
        std::vector<pollfd> ends;
        for (const Worker& worker : running_) ends.push_back({worker.says, POLLIN, 0});
        if (::poll(ends.data(), ends.size(), -1) < 0) return;  // interrupted
        for (std::size_t i = ends.size(); i-- > 0;) {
            if (ends[i].revents != 0) hear(i);
        }
    }

    void hear(std::size_t place) {
        std::array<char, 1 << 14> block;
        const ssize_t count = ::read(running_[place].says, block.data(), block.size());
        if (count > 0) {
            said_[place].append(block.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            bury(place);
        }
    }

    void bury(std::size_t place) {
        const Worker worker = running_[place];
        ::close(worker.says);
        int status = 0;
        while (::waitpid(worker.process, &status, 0) < 0 && errno == EINTR) {
        }
        std::string said = std::move(said_[place]);
        running_.erase(running_.begin() + static_cast<std::ptrdiff_t>(place));
        said_.erase(said_.begin() + static_cast<std::ptrdiff_t>(place));
        end(worker.file, judged(status, std::move(said)));
    }

    const Workers& workers_;
    std::vector<std::optional<Ended>> ended_;  // by file
    std::vector<Worker> running_;
    std::vector<std::string> said_;  // by those who run
    std::size_t next_ = 0;
    std::size_t told_ = 0;
    std::size_t ended_count_ = 0;
};

}  // namespace

void work_on_all(std::size_t count, const Workers& workers) {
    Team(count, workers).work();
}

bool FileUse::note(std::size_t file, const std::string& name) {
    struct stat facts {};
    if (::stat(name.c_str(), &facts) != 0) return true;
    return known_.try_emplace({facts.st_dev, facts.st_ino}, file).first->second == file;
}

}  // namespace cli
