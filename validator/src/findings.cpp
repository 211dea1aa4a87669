// What one record says against a plug-in.
#include "findings.h"

#include <algorithm>
#include <sstream>

#include "base/printable.h"
#include "suites/error_codes.h"

namespace validator {
namespace {

using EndKind = host::base::ProcessEnd::Kind;

// The line in which a checker that runs along says what is wrong.
std::string checker_line(const std::string& printed) {
    std::istringstream lines(printed);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t at = std::min(line.find("ERROR: "), line.find("runtime error: "));
        if (at != std::string::npos && line.find("Sanitizer") != std::string::npos) return line.substr(at);
        if (line.find("runtime error: ") != std::string::npos) return line;
    }
    return {};
}

std::string seconds_text(std::chrono::milliseconds time) {
    return std::to_string(time.count() / 1000) + " s";
}

std::string failed_function(const Outcome& outcome, const std::string& command) {
    using host::suites::PluginFunction;
    switch (outcome.failed_in) {
        case PluginFunction::entry_point:
            return "entry point";
        case PluginFunction::update_menu_hook:
            return "update-menu hook";
        case PluginFunction::command_hook:
            return command;
        case PluginFunction::idle_hook:
            return "idle hook";
        case PluginFunction::death_hook:
            return "death hook";
    }
    return command;
}

}  // namespace

bool has_hung(const VisitRecord& record) {
    return record.end.kind == EndKind::out_of_time || record.end.kind == EndKind::out_of_processor_time;
}

std::string when(const VisitPlan& plan) {
    return "when " + plan.situation->sentence + ", ";
}

std::optional<TestFinding> bad_end(const VisitPlan& plan, const VisitRecord& record, const VisitLimits& limits) {
    if (record.has_finished()) return std::nullopt;
    const std::string checker = checker_line(record.printed);
    switch (record.end.kind) {
        case EndKind::crashed:
            return TestFinding{TestVerdict::crashed,
                               when(plan) + "it " + in_words(record.end) + ' ' + record.where +
                                   (checker.empty() ? "" : ": " + host::base::printable(checker))};
        case EndKind::exited:
            if (!checker.empty())
                return TestFinding{TestVerdict::crashed, when(plan) + "a sanitizer stopped it " + record.where + ": " +
                                                             host::base::printable(checker)};
            if (record.printed.find("ASan runtime does not come first") != std::string::npos)
                return TestFinding{TestVerdict::failed,
                                   "it is built with AddressSanitizer, whose library has to be loaded first: set "
                                   "LD_PRELOAD=$(g++ -print-file-name=libasan.so)"};
            if (record.has_come_through())
                return TestFinding{TestVerdict::failed, when(plan) +
                                                            "what runs along with it, a memory checker for one, gave "
                                                            "its process the exit code " +
                                                            std::to_string(record.end.number) + ": see its report"};
            return TestFinding{TestVerdict::failed, when(plan) + "it " + in_words(record.end) + ' ' + record.where +
                                                        ": a plug-in must not end the application"};
        case EndKind::out_of_memory:
            return TestFinding{TestVerdict::failed, when(plan) + "it took more than " +
                                                        std::to_string(limits.memory.value_or(0) >> 20) +
                                                        " MiB of memory " + record.where};
        case EndKind::out_of_processor_time:
            return TestFinding{TestVerdict::hung, when(plan) + "it computed for more than " +
                                                      std::to_string(limits.processor_time.count()) + " s " +
                                                      record.where};
        case EndKind::out_of_time:
            return TestFinding{TestVerdict::hung, when(plan) + "it did not come back within " +
                                                      seconds_text(limits.time) + ' ' + record.where};
        case EndKind::finished:
            break;
    }
    return std::nullopt;
}

std::optional<TestFinding> exception_in(const VisitPlan& plan, const Outcome& outcome, const std::string& command) {
    if (!outcome.has_thrown) return std::nullopt;
    return TestFinding{TestVerdict::failed, when(plan) + "an exception left its " + failed_function(outcome, command) +
                                                ", which would end the application: catch all of them there"};
}

std::string error_words(const Outcome& outcome, const std::string& command) {
    std::string words = "its " + failed_function(outcome, command) + " returned error " + std::to_string(outcome.error);
    if (!outcome.refusals.empty())
        words += " after the host refused " + outcome.refusals.back().function + " (" +
                 outcome.refusals.back().sentence + ")";
    return words;
}

const Refusal* refusal_of_what_is_gone(const Outcome& outcome) {
    for (const Refusal& refusal : outcome.refusals) {
        const bool is_gone = refusal.sentence.find(" any more.") != std::string::npos ||
                             refusal.sentence.find("was deleted.") != std::string::npos;
        if (is_gone && refusal.code == host::suites::kBadArgument) return &refusal;
    }
    return nullptr;
}

std::optional<TestFinding> error_in(const VisitPlan& plan, const Outcome& outcome, const std::string& command) {
    if (outcome.error == A_Err_NONE || outcome.has_thrown) return std::nullopt;
    if (const std::string missing = not_offered_in(outcome); !missing.empty())
        return TestFinding{TestVerdict::not_applicable, when(plan) + "it needs " + missing + ", not offered here"};
    if (!outcome.told.empty()) return std::nullopt;
    if (!outcome.script_problems.empty())
        return TestFinding{TestVerdict::warning, when(plan) + error_words(outcome, command) + " after a script of it " +
                                                     "failed here: " + outcome.script_problems.front()};
    const bool is_command = outcome.failed_in == host::suites::PluginFunction::command_hook;
    return TestFinding{
        TestVerdict::failed,
        when(plan) + error_words(outcome, command) +
            (is_command ? ": disable the command where it cannot work, or tell the user and return 0" : "")};
}

bool is_of_start(const VisitRecord& record, const host::suites::HandedOut& handle) {
    return !record.start.calls.empty() && handle.made_by_call <= record.start.calls.back().number;
}

std::vector<host::suites::HandedOut> undeclared_leaks(const VisitRecord& record, const Declared& declared) {
    const bool is_after_failure =
        std::any_of(record.outcomes.begin(), record.outcomes.end(), [](const Outcome& outcome) {
            return std::any_of(outcome.calls.begin(), outcome.calls.end(),
                               [](const MadeCall& call) { return call.result != A_Err_NONE; });
        });
    std::vector<host::suites::HandedOut> leaks = record.left;
    std::erase_if(leaks, [&](const auto& handle) {
        return is_after_failure ? declared.leaves_after_failure(handle.kind, handle.made_by)
                                : declared.leaves(handle.kind, handle.made_by);
    });
    return leaks;
}

const MadeCall* injected_call(const VisitRecord& record) {
    const auto find = [](const Outcome& outcome) -> const MadeCall* {
        for (const MadeCall& call : outcome.calls)
            if (call.injected) return &call;
        return nullptr;
    };
    if (const MadeCall* call = find(record.start)) return call;
    for (const Outcome& outcome : record.outcomes)
        if (const MadeCall* call = find(outcome)) return call;
    return nullptr;
}

std::string struck_call(const Fault& fault, const VisitRecord& record, const VisitRecord& clean) {
    if (const MadeCall* call = injected_call(record)) return call->words();
    const auto kind = counts_suites(fault.kind) ? MadeCall::Kind::acquisition : MadeCall::Kind::suite;
    std::uint64_t n = 0;
    const auto find = [&](const Outcome& outcome) -> const MadeCall* {
        for (const MadeCall& call : outcome.calls)
            if (call.kind == kind && call.made_in == fault.function && ++n == fault.n) return &call;
        return nullptr;
    };
    if (const MadeCall* call = find(clean.start)) return call->words();
    for (const Outcome& outcome : clean.outcomes)
        if (const MadeCall* call = find(outcome)) return call->words();
    return {};
}

bool gives_back(const std::string& function) {
    for (const char* begin : {"AEGP_Dispose", "AEGP_Free", "AEGP_End", "AEGP_Unlock"})
        if (function.starts_with(begin)) return true;
    return false;
}

bool changes_the_project(const std::string& function) {
    for (const char* begin : {"AEGP_SetSelection", "AEGP_SetMenu"})
        if (function.starts_with(begin)) return false;
    for (const char* begin : {"AEGP_Set", "AEGP_Add", "AEGP_Create", "AEGP_Insert", "AEGP_Duplicate", "AEGP_Reorder",
                              "AEGP_Apply", "AEGP_ExecuteScript", "AEGP_ConvertTo", "AEGP_DoCommand"})
        if (function.starts_with(begin)) return true;
    return false;
}

std::string not_offered_in(const Outcome& outcome) {
    std::string names;
    for (const MadeCall& call : outcome.calls) {
        if (call.is_offered || names.find(call.words()) != std::string::npos) continue;
        names += (names.empty() ? "" : ", ") + call.words();
    }
    return names;
}

}  // namespace validator
