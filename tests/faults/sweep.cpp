// The sweep: visits in processes of their own, judged here.
#include "sweep.h"

#include <cstdlib>
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
std::vector<Fault> faults_of(const SweepVisit& clean, std::uint64_t stride) {
    std::vector<Fault> faults;
    std::uint64_t first = 0;
    for (const Fault::Kind kind : kSweptKinds) {
        const bool counts_suites = validator::counts_suites(kind);
        const std::uint64_t last = count_of(clean, counts_suites ? MadeCall::Kind::acquisition : MadeCall::Kind::suite);
        for (std::uint64_t n = 1 + first % stride; n <= last; n += stride) faults.push_back({kind, n});
        ++first;
    }
    return faults;
}

class Tally {
  public:
    Tally(const Subject& subject, const Scenario& scenario, const SweepVisit& clean, SweepReport& report)
        : subject_(subject), scenario_(scenario), clean_(clean), report_(report) {}

    void add(const Fault& fault, const SweepVisit& visit) {
        for (std::size_t i = 0; i < std::size(kSweptKinds); ++i)
            if (kSweptKinds[i] == fault.kind) ++report_.figures.swept[i];
        Judgement judgement;
        if (visit.end.kind == host::base::ProcessEnd::Kind::finished)
            judgement = judge(subject_.promise, scenario_, fault, visit, clean_);
        else
            judgement.findings.push_back({"lives", "it " + in_words(visit.end)});
        for (const FailedCheck& finding : judgement.findings)
            report_.findings.push_back(finding.check + ": " + fault.words() +
                                       (judgement.where.empty() ? "" : " (" + judgement.where + ")") + ": " +
                                       finding.sentence);
        if (!judgement.findings.empty()) ++report_.figures.broken;
        const bool counts = fault.kind != Fault::Kind::none;
        if (judgement.ending == Ending::returned && counts) ++report_.figures.returned;
        if (judgement.ending == Ending::dropped && counts) ++report_.figures.dropped;
    }

  private:
    const Subject& subject_;
    const Scenario& scenario_;
    const SweepVisit& clean_;
    SweepReport& report_;
};

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
    constexpr std::uint64_t kMostPerKind = 40;
    const char* wanted = std::getenv("EXFLATE_SWEEP");
    const bool is_full = wanted != nullptr && std::string_view(wanted) == "full";
    return {.most_per_kind = is_full ? 0 : kMostPerKind};
}

SweepReport sweep(const Subject& subject, const Scenario& scenario, const Effort& effort) {
    SweepVisit clean;
    visit(subject.module, scenario, {Fault()}, effort.seconds_per_visit,
          [&](const Fault&, const SweepVisit& visited) { clean = visited; });
    if (clean.end.kind != host::base::ProcessEnd::Kind::finished)
        throw std::runtime_error("the plug-in " + in_words(clean.end) + " without a fault");
    SweepReport report;
    report.stride = stride_of(clean, effort);
    report.figures.calls = count_of(clean, MadeCall::Kind::suite);
    report.figures.acquisitions = count_of(clean, MadeCall::Kind::acquisition);
    Tally tally(subject, scenario, clean, report);
    tally.add(Fault(), clean);
    visit(subject.module, scenario, faults_of(clean, report.stride), effort.seconds_per_visit,
          [&](const Fault& fault, const SweepVisit& visited) { tally.add(fault, visited); });
    return report;
}

}  // namespace faults
