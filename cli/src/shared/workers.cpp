// Processes for files: the plug-in is loaded once, and each worker starts with it.
#include "cli/shared/workers.h"

#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "base/child_process.h"

namespace cli {
namespace {

using host::base::ChildProcess;
using host::base::ProcessEnd;

struct Worker {
    std::size_t file;
    std::unique_ptr<ChildProcess> process;
};

// After a worker's standard error come its result and the result's size.
void say_result(const ChildProcess::Parent& parent, std::string result) {
    const std::size_t size = result.size();
    result.append(reinterpret_cast<const char*>(&size), sizeof size);
    parent.say(result);
}

std::string take_result(std::string& said) {
    std::size_t size = 0;
    if (said.size() < sizeof size) return "";
    std::memcpy(&size, said.data() + said.size() - sizeof size, sizeof size);
    said.resize(said.size() - sizeof size);
    if (size > said.size()) return "";
    std::string result = said.substr(said.size() - size);
    said.resize(said.size() - size);
    return result;
}

Ended judged(const ProcessEnd& end, std::string said) {
    Ended ended{std::move(said), {}, {}, {}};
    if (end.kind == ProcessEnd::Kind::finished) {
        ended.code = static_cast<ExitCode>(end.number);
        ended.result = take_result(ended.said);
    } else {
        ended.problem = "the process that worked on it " + in_words(end);
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
                ended_[told_].emplace();  // frees the text
            }
        }
    }

  private:
    void start(std::size_t file) {
        try {
            const auto work = [this, file](const ChildProcess::Parent& parent) {
                Done done = workers_.work(file);
                say_result(parent, std::move(done.result));
                return static_cast<int>(done.code);
            };
            running_.push_back({file, std::make_unique<ChildProcess>(work, host::base::ProcessLimits{},
                                                                     ChildProcess::Streams::errors_are_said)});
        } catch (const host::base::NoProcess& reason) {
            end(file, {"", {}, std::string("no process for it can be started: ") + reason.what(), ""});
        }
    }

    void end(std::size_t file, Ended ended) {
        ended_[file] = std::move(ended);
        workers_.progress(++ended_count_);
    }

    // Waits until a worker writes something or ends.
    void listen() {
        std::vector<ChildProcess*> heard;
        for (const Worker& worker : running_) heard.push_back(worker.process.get());
        ChildProcess::hear_any(heard);
        for (const Worker& worker : running_) {
            if (const auto& how = worker.process->end())
                end(worker.file, judged(*how, std::move(worker.process->said())));
        }
        std::erase_if(running_, [](const Worker& worker) { return worker.process->end().has_value(); });
    }

    const Workers& workers_;
    std::vector<std::optional<Ended>> ended_;  // by file
    std::vector<Worker> running_;
    std::size_t next_ = 0;
    std::size_t told_ = 0;
    std::size_t ended_count_ = 0;
};

}  // namespace

bool can_work_at_once() {
    return ChildProcess::can_start();
}

void work_on_all(std::size_t count, const Workers& workers) {
    Team(count, workers).work();
}

bool FileUse::note(std::size_t file, const std::string& name) {
    const auto identity = host::base::identity_of(name);
    return !identity || known_.try_emplace(*identity, file).first->second == file;
}

}  // namespace cli
