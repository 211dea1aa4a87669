// Rung 5: what was handed out is given back, once, and not used afterwards.
#include <algorithm>
#include <map>

#include "examiner.h"
#include "findings.h"

namespace validator {
namespace {

using host::suites::HandedOut;
using host::suites::HandleKind;
using host::suites::Misuse;

struct Kept {
    HandleKind kind;
    const char* test;
    const char* sentence;
};

constexpr Kept kKept[] = {
    {HandleKind::memory, "leaks.memory", "every memory handle is freed"},
    {HandleKind::collection, "leaks.collections", "every collection is disposed of"},
    {HandleKind::stream, "leaks.streams", "every stream is disposed of"},
    {HandleKind::stream_value, "leaks.stream-values", "every value of a stream is disposed of"},
    {HandleKind::effect, "leaks.effects", "every effect is disposed of"},
    {HandleKind::footage, "leaks.footage", "footage that is not added to the project is disposed of"},
    {HandleKind::keyframe_batch, "leaks.keyframe-batches", "adding keyframes is always ended"},
    {HandleKind::block, "leaks.blocks", "every block of the basic suite is freed"},
};

constexpr const char* kSuites = "leaks.suites";
constexpr const char* kTwice = "handles.disposed-twice";
constexpr const char* kAfter = "handles.used-after-disposal";
constexpr const char* kLocked = "handles.freed-while-locked";
constexpr const char* kReleased = "handles.released-twice";

void examine_left(Examiner& examiner, const CleanVisit& visit) {
    for (const Kept& kept : kKept) examiner.note_ok(kept.test);
    for (const HandedOut& handle : undeclared_leaks(visit.record, examiner.declared())) {
        const auto kept =
            std::find_if(std::begin(kKept), std::end(kKept), [&](const Kept& one) { return one.kind == handle.kind; });
        if (kept == std::end(kKept)) continue;
        const bool is_old = is_of_start(visit.record, handle);
        const std::string what = "the " + std::string(name_of(handle.kind)) + " that " + handle.made_by + " gave";
        examiner.note(kept->test,
                      {is_old ? TestVerdict::warning : TestVerdict::failed,
                       when(visit.plan) + what +
                           (is_old ? " at the start was still there at the end" : " was never disposed of")},
                      visit.plan, visit.record);
    }
}

void examine_misuse(Examiner& examiner, const CleanVisit& visit, const char* test, const std::vector<Misuse>& misuses,
                    const std::string& what_happened) {
    examiner.note_ok(test);
    for (const Misuse& misuse : misuses) {
        if (test == std::string_view(kLocked) && examiner.declared().frees_locked(misuse.made_by)) continue;
        examiner.note(test,
                      {TestVerdict::failed, when(visit.plan) + "the " + std::string(name_of(misuse.kind)) + " that " +
                                                misuse.made_by + " gave " + what_happened + " by " + misuse.misused_by},
                      visit.plan, visit.record);
    }
}

void examine_suites(Examiner& examiner, const CleanVisit& visit) {
    examiner.note_ok(kSuites);
    const auto& from_start = examiner.start.held;
    for (const std::string& suite : visit.record.held) {
        const bool is_from_start = std::find(from_start.begin(), from_start.end(), suite) != from_start.end();
        examiner.note(
            kSuites,
            {is_from_start ? TestVerdict::warning : TestVerdict::failed,
             when(visit.plan) + suite +
                 (is_from_start ? " is acquired at the start and never released"
                                : " is acquired by the command and never released: every run holds one more")},
            visit.plan, visit.record);
    }
    examiner.note_ok(kReleased);
    for (const Outcome& outcome : visit.record.outcomes) {
        for (const MadeCall& call : outcome.calls) {
            if (call.kind != MadeCall::Kind::release || call.function != "ReleaseSuite" || call.result == A_Err_NONE)
                continue;
            examiner.note(kReleased,
                          {TestVerdict::failed,
                           when(visit.plan) + call.accessor + " is released more often than it was acquired"},
                          visit.plan, visit.record);
        }
    }
}

}  // namespace

const std::vector<TestFacts>& leak_tests() {
    static const std::vector<TestFacts> tests = [] {
        std::vector<TestFacts> all;
        for (const Kept& kept : kKept) all.push_back({kept.test, kept.sentence, 5});
        all.push_back({kSuites, "every suite that is acquired is released", 5});
        all.push_back({kTwice, "nothing is disposed of twice", 5});
        all.push_back({kAfter, "nothing is used after it was disposed of", 5});
        all.push_back({kLocked, "memory is unlocked before it is freed", 5});
        all.push_back({kReleased, "no suite is released more often than it was acquired", 5});
        return all;
    }();
    return tests;
}

bool examine_leaks(Examiner& examiner) {
    for (const CleanVisit& visit : examiner.clean) {
        if (!visit.record.has_finished()) continue;
        examine_left(examiner, visit);
        examine_misuse(examiner, visit, kTwice, visit.record.disposed_twice, "was disposed of a second time");
        examine_misuse(examiner, visit, kAfter, visit.record.used_after_disposal, "was used after its disposal");
        examine_misuse(examiner, visit, kLocked, visit.record.freed_while_locked, "was freed while it was locked");
        examine_suites(examiner, visit);
    }
    return true;
}

}  // namespace validator
