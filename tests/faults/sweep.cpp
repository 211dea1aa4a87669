// The sweep. A worker process makes the visits and writes what it finds into a pipe, announcing each visit first; when
// it dies, the visit announced last is the culprit and a new worker goes on with the next.
#include "sweep.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace faults {
namespace {

std::uint64_t count_of(const SweepVisit& clean, MadeCall::Kind kind) {
    return of_kind(clean.calls, kind).size();
}

std::uint64_t stride_of(const SweepVisit& clean, const Effort& effort) {
    if (effort.most_per_kind == 0) return 1;
    return (count_of(clean, MadeCall::Kind::suite) + effort.most_per_kind - 1) / effort.most_per_kind;
}

// Each kind begins at another n, so that together they reach more calls than one of them.
std::vector<PlannedFault> faults_of(const SweepVisit& clean, std::uint64_t stride) {
    std::vector<PlannedFault> faults = {{}};
    std::uint64_t first = 0;
    for (const PlannedFault::Kind kind : kSweptKinds) {
        const bool counts_suites =
            kind == PlannedFault::Kind::suite_once || kind == PlannedFault::Kind::suite_from_then_on;
        const std::uint64_t last = count_of(clean, counts_suites ? MadeCall::Kind::acquisition : MadeCall::Kind::suite);
        for (std::uint64_t n = 1 + first % stride; n <= last; n += stride) faults.push_back({kind, n});
        ++first;
    }
    return faults;
}

std::string one_line(std::string text) {
    for (char& c : text)
        if (c == '\n') c = ' ';
    return text;
}

class SweepWorker {
  public:
    SweepWorker(const Subject& subject, const Scenario& scenario, const Effort& effort, std::FILE* out)
        : subject_(subject), scenario_(scenario), effort_(effort), out_(out) {}

    void work(std::size_t first) {
        const host::runner::PluginModule module(subject_.module);
        const SweepVisit clean = visit(module, scenario_, {}, nullptr);
        const std::uint64_t stride = stride_of(clean, effort_);
        const std::vector<PlannedFault> faults = faults_of(clean, stride);
        std::fprintf(out_, "begin %zu %zu %zu\n", static_cast<std::size_t>(stride),
                     of_kind(clean.calls, MadeCall::Kind::suite).size(),
                     of_kind(clean.calls, MadeCall::Kind::acquisition).size());
        for (std::size_t i = first; i < faults.size(); ++i) {
            std::fprintf(out_, "visit %zu %d %s\n", i, static_cast<int>(faults[i].kind), faults[i].words().c_str());
            std::fflush(out_);
            alarm(effort_.seconds_per_visit);
            judge_one(module, faults[i], clean);
            alarm(0);
        }
        std::fprintf(out_, "done\n");
    }

  private:
    void judge_one(const host::runner::PluginModule& module, const PlannedFault& fault, const SweepVisit& clean) {
        const Judgement judgement =
            judge(subject_.promise, scenario_, fault, visit(module, scenario_, fault, &clean), clean);
        for (const FailedCheck& finding : judgement.findings) {
            std::string line = finding.check + ": " + fault.words();
            if (!judgement.where.empty()) line += " (" + judgement.where + ")";
            std::fprintf(out_, "finding %s\n", one_line(line + ": " + finding.sentence).c_str());
        }
        std::fprintf(out_, "ending %d\n", static_cast<int>(judgement.ending));
    }

    const Subject& subject_;
    const Scenario& scenario_;
    const Effort& effort_;
    std::FILE* out_;
};

// What a worker wrote, as far as it came.
class Reading {
  public:
    explicit Reading(SweepReport& report) : report_(report) {}

    void read(const std::string& line) {
        std::istringstream in(line);
        std::string word;
        in >> word;
        if (word == "begin") {
            in >> report_.stride >> report_.figures.calls >> report_.figures.acquisitions;
        } else if (word == "visit") {
            begin_visit(in);
        } else if (word == "finding") {
            add_finding(line.substr(word.size() + 1));
        } else if (word == "ending") {
            int ending = 0;
            in >> ending;
            end_visit(static_cast<Ending>(ending));
        } else if (word == "broken") {
            throw std::runtime_error("the sweep itself fails: " + line.substr(word.size() + 1));
        } else if (word == "done") {
            is_done_ = true;
        }
    }

    void lose_visit(int status) {
        if (!is_visiting_) throw std::runtime_error("a worker ended before its first visit");
        const bool has_hung = WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM;
        const std::string how = WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                                                    : "exit code " + std::to_string(WEXITSTATUS(status));
        add_finding((has_hung ? "hang: " : "crash: ") + fault_ + ": the process ended with " + how);
        end_visit(Ending::clean);
    }

    bool is_done() const { return is_done_; }
    std::size_t next() const { return next_; }

  private:
    void begin_visit(std::istringstream& in) {
        std::size_t index = 0;
        int kind = 0;
        in >> index >> kind;
        std::getline(in >> std::ws, fault_);
        next_ = index + 1;
        is_visiting_ = true;
        has_findings_ = false;
        for (std::size_t i = 0; i < std::size(kSweptKinds); ++i)
            if (static_cast<int>(kSweptKinds[i]) == kind) ++report_.figures.swept[i];
    }

    void add_finding(std::string finding) {
        report_.findings.push_back(std::move(finding));
        if (!has_findings_) ++report_.figures.broken;
        has_findings_ = true;
    }

    void end_visit(Ending ending) {
        if (ending == Ending::returned && next_ > 1) ++report_.figures.returned;
        if (ending == Ending::dropped && next_ > 1) ++report_.figures.dropped;
        is_visiting_ = false;
    }

    SweepReport& report_;
    std::size_t next_ = 0;
    std::string fault_;
    bool is_visiting_ = false;
    bool has_findings_ = false;
    bool is_done_ = false;
};

[[noreturn]] void be_worker(const Subject& subject, const Scenario& scenario, const Effort& effort, std::size_t first,
                            int pipe) {
    std::FILE* out = fdopen(pipe, "w");
    try {
        SweepWorker(subject, scenario, effort, out).work(first);
    } catch (const std::exception& error) {
        std::fprintf(out, "broken %s\n", one_line(error.what()).c_str());
    }
    std::fclose(out);
    _exit(0);
}

}  // namespace

std::uint64_t Figures::visits() const {
    std::uint64_t sum = 0;
    for (const std::uint64_t count : swept) sum += count;
    return sum;
}

Figures& Figures::operator+=(const Figures& other) {
    calls += other.calls;
    acquisitions += other.acquisitions;
    for (std::size_t i = 0; i < swept.size(); ++i) swept[i] += other.swept[i];
    returned += other.returned;
    dropped += other.dropped;
    broken += other.broken;
    return *this;
}

Effort usual_effort() {
    constexpr std::uint64_t kMostPerKind = 80;
    const char* wanted = std::getenv("EXFLATE_SWEEP");
    const bool is_full = wanted != nullptr && std::string_view(wanted) == "full";
    return {.most_per_kind = is_full ? 0 : kMostPerKind};
}

SweepReport sweep(const Subject& subject, const Scenario& scenario, const Effort& effort) {
    SweepReport report;
    Reading reading(report);
    while (!reading.is_done()) {
        int ends[2];
        if (pipe(ends) != 0) throw std::runtime_error("no pipe for the worker");
        std::fflush(nullptr);
        const pid_t worker = fork();
        if (worker < 0) throw std::runtime_error("no process for the worker");
        if (worker == 0) {
            close(ends[0]);
            be_worker(subject, scenario, effort, reading.next(), ends[1]);
        }
        close(ends[1]);
        std::FILE* in = fdopen(ends[0], "r");
        std::string line;
        for (int c = std::fgetc(in); c != EOF; c = std::fgetc(in)) {
            if (c != '\n') {
                line += static_cast<char>(c);
                continue;
            }
            reading.read(line);
            line.clear();
        }
        std::fclose(in);
        int status = 0;
        waitpid(worker, &status, 0);
        if (!reading.is_done()) reading.lose_visit(status);
    }
    return report;
}

}  // namespace faults
