// The checks of the sweep.
#include "checks.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace faults {
namespace {

// What the suite handler throws, whatever the host answered.
constexpr A_Err kMissingSuite = 516;

bool contains(const std::vector<Part>& parts, Part part) {
    return std::find(parts.begin(), parts.end(), part) != parts.end();
}

// A call with its place in the visit.
struct Placed {
    const MadeCall* call;
    Part part;
    int pass = 0;
};

std::string words(const Placed& placed) {
    return std::string(placed.part) + ": " + placed.call->words();
}

// A suite is asked for on behalf of the next call.
std::vector<Placed> place_clean(const Promise& promise, const Scenario& scenario, const std::vector<MadeCall>& calls) {
    std::vector<Placed> placed;
    const auto reader = promise.reader(scenario);
    for (const MadeCall& call : calls) {
        const bool is_suite_call = call.kind == MadeCall::Kind::suite;
        placed.push_back({&call, is_suite_call ? reader->part_of(call) : Part(), reader->pass()});
    }
    Part next;
    for (auto it = placed.rbegin(); it != placed.rend(); ++it) {
        if (it->call->kind == MadeCall::Kind::suite) next = it->part;
        if (it->call->kind == MadeCall::Kind::acquisition) it->part = next;
    }
    return placed;
}

// The hook's own suites are those that it holds until it returns; an operation inside it gives its own back earlier.
bool is_held_to_the_end(const std::vector<MadeCall>& calls, std::size_t acquisition) {
    int depth = 0;
    for (std::size_t i = acquisition; i < calls.size(); ++i) {
        if (calls[i].accessor != calls[acquisition].accessor || calls[i].kind == MadeCall::Kind::suite) continue;
        depth += calls[i].kind == MadeCall::Kind::acquisition ? 1 : -1;
        if (depth > 0) continue;
        return std::all_of(calls.begin() + static_cast<std::ptrdiff_t>(i), calls.end(),
                           [](const MadeCall& call) { return call.kind == MadeCall::Kind::release; });
    }
    return true;
}

class Judge {
  public:
    Judge(const Promise& promise, const Scenario& scenario, const Fault& fault, const SweepVisit& visit,
          const SweepVisit& clean)
        : promise_(promise),
          scenario_(scenario),
          fault_(fault),
          visit_(visit),
          clean_(clean),
          clean_placed_(place_clean(promise, scenario, clean.calls)) {}

    Judgement judge() {
        follow();
        check_result();
        check_rest_of_run();
        check_calls_still_made();
        check_undo_group();
        check_handles();
        check_memory();
        for (const std::string& suite : visit_.held) find("suite-held", suite);
        for (const std::string& misuse : visit_.misused) find("handle-misused", misuse);
        if (scenario_.door == VisitedDoor::command && !visit_.outcome.is_handled) find("not-handled", "it does not");
        check_undo();
        if (failure_) {
            judgement_.ending = Ending::returned;
        } else if (!dropped_.empty()) {
            judgement_.ending = Ending::dropped;
        }
        return judgement_;
    }

  private:
    void find(std::string check, std::string sentence) {
        judgement_.findings.push_back({std::move(check), std::move(sentence)});
    }

    // Places every call and finds the failure that counts.
    void follow() {
        const auto reader = promise_.reader(scenario_);
        std::vector<Part> allowed;
        bool is_as_clean = true;
        for (std::size_t i = 0; i < visit_.calls.size(); ++i) {
            const MadeCall& call = visit_.calls[i];
            if (is_as_clean) require_same(call, i);
            Part part;
            if (call.kind == MadeCall::Kind::suite) part = reader->part_of(call);
            if (call.kind == MadeCall::Kind::acquisition) {
                part = is_as_clean ? clean_placed_[i].part : reader->part_of_acquisition(call.accessor);
            }
            placed_.push_back({&call, part, reader->pass()});
            if (call.kind == MadeCall::Kind::release) continue;
            if (failure_ && !contains(allowed, part)) {
                find("calls-after", words(placed_.back()) + " after " + words(placed_[*failure_]));
                allowed.push_back(part);
            }
            if (call.result == A_Err_NONE) continue;

            const bool is_refusal = call.kind == MadeCall::Kind::acquisition;
            const Rule& rule = promise_.rule(part);
            if (call.injected && judgement_.where.empty()) judgement_.where = words(placed_.back());
            if (rule.code == Code::dropped) interrupted_.push_back(i);
            if (failure_) {
                if (is_refusal && rule.missing_suite_wins) expected_ = kMissingSuite;
            } else if (rule.code == Code::dropped) {
                dropped_.push_back(i);
            } else {
                failure_ = i;
                expected_ = is_refusal ? kMissingSuite : call.result;
                is_own_suite_ = is_refusal && is_own(i);
                if (!is_own_suite_) allowed = rule.parts;
                reader->note_failure(part);
            }
            if (call.injected) is_as_clean = false;
        }
    }

    // Whether the clean visit holds the suite of the same acquisition to the end: the one that comes at the same place
    // among those of its part and pass.
    bool is_own(std::size_t acquisition) const {
        const auto is_alike = [&](const Placed& other) {
            const Placed& it = placed_[acquisition];
            return other.call->kind == it.call->kind && other.call->accessor == it.call->accessor &&
                   other.part == it.part && other.pass == it.pass;
        };
        auto before =
            std::count_if(placed_.begin(), placed_.begin() + static_cast<std::ptrdiff_t>(acquisition), is_alike);
        for (std::size_t i = 0; i < clean_placed_.size(); ++i)
            if (is_alike(clean_placed_[i]) && before-- == 0) return is_held_to_the_end(clean_.calls, i);
        return false;
    }

    void require_same(const MadeCall& call, std::size_t i) const {
        if (i < clean_.calls.size() && clean_.calls[i].words() == call.words() && clean_.calls[i].kind == call.kind)
            return;
        throw std::logic_error("two visits differ before the fault, at " + call.words());
    }

    void check_result() {
        const A_Err got = visit_.outcome.error;
        const std::string sentence = "expected " + std::to_string(expected_) + ", got " + std::to_string(got);
        if (visit_.outcome.has_thrown) {
            find("exception", "something was thrown");
        } else if (got != A_Err_NONE && got != expected_ && (expected_ == A_Err_NONE || is_dropped_code(got))) {
            find("run-stopped", sentence);
        } else if (expected_ != A_Err_NONE && got == A_Err_NONE) {
            find("error-swallowed", sentence);
        } else if (got != expected_) {
            find("code-changed", sentence);
        }
    }

    bool is_dropped_code(A_Err code) const {
        return std::any_of(dropped_.begin(), dropped_.end(), [&](std::size_t i) {
            const MadeCall& call = *placed_[i].call;
            return code == (call.kind == MadeCall::Kind::acquisition ? kMissingSuite : call.result);
        });
    }

    // After one dropped failure the calls are those of the clean visit, but for one run of calls of the parts named.
    void check_rest_of_run() {
        const bool strikes_once = fault_.kind == Fault::Kind::call_once || fault_.kind == Fault::Kind::suite_once;
        if (!strikes_once || failure_ || dropped_.empty() || visit_.outcome.error != A_Err_NONE) return;
        const std::size_t at =
            *std::find_if(dropped_.begin(), dropped_.end(), [&](std::size_t i) { return placed_[i].call->injected; });
        const auto rest_of = [at](const std::vector<Placed>& calls) {
            std::vector<const Placed*> rest;
            for (std::size_t i = at + 1; i < calls.size(); ++i)
                if (calls[i].call->kind == MadeCall::Kind::suite) rest.push_back(&calls[i]);
            return rest;
        };
        const std::vector<const Placed*> made = rest_of(placed_);
        const std::vector<const Placed*> clean = rest_of(clean_placed_);
        const auto same = [](const Placed* a, const Placed* b) { return a->call->words() == b->call->words(); };

        std::size_t tail = 0;
        while (tail < made.size() && tail < clean.size() &&
               same(made[made.size() - 1 - tail], clean[clean.size() - 1 - tail]))
            ++tail;
        std::size_t head = 0;
        while (head + tail < made.size() && head < clean.size() && same(made[head], clean[head])) ++head;
        if (head + tail < made.size() || head + tail > clean.size()) {
            find("run-stopped", "other calls follow than in a run without faults");
            return;
        }
        const std::vector<Part>& optional = promise_.rule(placed_[at].part).parts;
        for (std::size_t i = head; i < clean.size() - tail; ++i) {
            // The call for which a refused suite was asked for is missing with it.
            const bool is_the_failed_one = fault_.kind == Fault::Kind::suite_once && i == 0;
            if (is_the_failed_one || contains(optional, clean[i]->part)) continue;
            find("run-stopped", "missing is " + words(*clean[i]));
            return;
        }
    }

    void check_calls_still_made() {
        if (!failure_ || is_own_suite_ || fault_.kind == Fault::Kind::call_then_no_suites) return;
        const Placed& failed = placed_[*failure_];
        const std::string_view function = promise_.rule(failed.part).still_calls;
        if (function.empty()) return;
        const auto count = [&](const std::vector<Placed>& calls) {
            return std::count_if(calls.begin(), calls.end(), [&](const Placed& placed) {
                return placed.pass == failed.pass && placed.call->is(function) &&
                       contains(promise_.rule(failed.part).parts, placed.part);
            });
        };
        const auto made = count(placed_);
        const auto due = count(clean_placed_);
        if (made == due) return;
        find("calls-after", std::to_string(made) + " calls of " + std::string(function) + " instead of " +
                                std::to_string(due) + " with " + words(failed));
    }

    void check_undo_group() {
        bool is_started = false;
        bool is_end_refused = false;
        int ends_after_failure = 0;
        for (std::size_t i = 0; i < placed_.size(); ++i) {
            const MadeCall& call = *placed_[i].call;
            if (call.is("AEGP_StartUndoGroup") && call.result == A_Err_NONE) is_started = true;
            if (!call.is("AEGP_EndUndoGroup")) continue;
            if (call.result != A_Err_NONE) is_end_refused = true;
            if (failure_ && i > *failure_) ++ends_after_failure;
        }
        const bool must_be_ended =
            failure_ && !is_own_suite_ && contains(promise_.rule(placed_[*failure_].part).parts, promise_.group_end);
        const bool may_be_open = is_started && (is_own_suite_ || is_end_refused);
        if (must_be_ended && ends_after_failure != 1) {
            find("undo-group",
                 "ended " + std::to_string(ends_after_failure) + " times after " + words(placed_[*failure_]));
        } else if (visit_.is_group_left_open != may_be_open) {
            find("undo-group", visit_.is_group_left_open ? "it is left open" : "it is not left to the host");
        }
    }

    // Whether what a call made or locked may stay because a call failed later and nothing is cleaned up then.
    bool was_interrupted(std::size_t i) const {
        if (failure_ && i < *failure_) return true;
        return std::any_of(interrupted_.begin(), interrupted_.end(), [&](std::size_t at) {
            return i < at && placed_[i].part == placed_[at].part && placed_[i].pass == placed_[at].pass;
        });
    }

    std::size_t index_of(std::uint64_t number) const {
        for (std::size_t i = 0; i < placed_.size(); ++i)
            if (placed_[i].call->number == number) return i;
        throw std::logic_error("call " + std::to_string(number) + " is none of the visit");
    }

    void check_handles() {
        for (const host::suites::HandedOut& handle : visit_.left) {
            const std::size_t i = index_of(handle.made_by_call);
            const auto& promised = promise_.left_to_host;
            const bool is_promised = std::any_of(promised.begin(), promised.end(), [&](const LeftToHost& one) {
                return one.made_in == placed_[i].part && one.kind == handle.kind;
            });
            if (!is_promised && !was_interrupted(i)) {
                find("handle-left", "a " + std::string(name_of(handle.kind)) + " of " + words(placed_[i]));
            }
        }
    }

    void check_memory() {
        std::map<std::string, std::size_t> locked;  // by the handle's text: the call that locked it
        for (std::size_t i = 0; i < placed_.size(); ++i) {
            const MadeCall& call = *placed_[i].call;
            if (call.kind != MadeCall::Kind::suite || call.accessor != "MemorySuite1" || call.result != A_Err_NONE)
                continue;
            const std::string handle = call.arguments.substr(0, call.arguments.find(" ("));
            if (call.function == "AEGP_LockMemHandle") locked[handle] = i;
            if (call.function == "AEGP_UnlockMemHandle" || call.function == "AEGP_FreeMemHandle") locked.erase(handle);
        }
        for (const auto& [handle, i] : locked) {
            if (!was_interrupted(i)) find("handle-locked", handle + " stays locked by " + words(placed_[i]));
        }
        for (const std::uint64_t number : visit_.freed_locked_by) {
            const Placed& freed = placed_[index_of(number)];
            if (!contains(promise_.frees_locked_memory_in, freed.part))
                find("handle-locked", "freed by " + words(freed));
        }
    }

    void check_undo() {
        if (!visit_.not_restored.empty()) find("not-undone", visit_.not_restored);
        if (scenario_.door != VisitedDoor::command && !visit_.outcome.undo_steps.empty()) {
            find("not-undone", "a visit that may change nothing makes an undo step");
        }
    }

    const Promise& promise_;
    const Scenario& scenario_;
    const Fault& fault_;
    const SweepVisit& visit_;
    const SweepVisit& clean_;
    std::vector<Placed> clean_placed_;
    std::vector<Placed> placed_;
    std::optional<std::size_t> failure_;    // the first that counts
    std::vector<std::size_t> dropped_;      // those before it
    std::vector<std::size_t> interrupted_;  // all that ended only their own part
    bool is_own_suite_ = false;             // it is the refusal of one of the hook's own suites
    A_Err expected_ = A_Err_NONE;
    Judgement judgement_;
};

}  // namespace

Judgement judge(const Promise& promise, const Scenario& scenario, const Fault& fault, const SweepVisit& visit,
                const SweepVisit& clean) {
    return Judge(promise, scenario, fault, visit, clean).judge();
}

}  // namespace faults
