// The report for people.
#include <algorithm>
#include <sstream>

#include "base/number_text.h"
#include "base/printable.h"
#include "report/report.h"

namespace validator {
namespace {

using host::base::printable;

std::string padded(std::string_view text, std::size_t width) {
    std::string result(text);
    result.resize(std::max(width, result.size()), ' ');
    return result;
}

// For a shell.
std::string quoted(const std::string& argument) {
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./=:,";
    if (!argument.empty() && argument.find_first_not_of(kPlain) == std::string::npos) return argument;
    std::string result = "'";
    for (const char c : argument) result += c == '\'' ? "'\\''" : std::string(1, c);
    return result + "'";
}

}  // namespace

std::size_t Totals::bad() const {
    return static_cast<std::size_t>(std::count_if(examination.results.begin(), examination.results.end(),
                                                  [](const TestResult& result) { return is_bad(result.verdict); }));
}

std::string Totals::last_line() const {
    if (bad() == 0) return "aegp-check: PASS";
    return "aegp-check: FAIL (" + std::to_string(bad()) + " of " + std::to_string(examination.results.size()) + ")";
}

std::string repeating(const TestResult& result, const CheckOptions& options) {
    std::string line = "aegp-check --only " + result.test->id;
    for (std::size_t i = 0; i < options.arguments.size(); ++i) {
        const std::string& argument = options.arguments[i];
        const bool is_left_out = argument == "--only" || argument == "--strictness" || argument == "--format";
        if (is_left_out) ++i;
        if (is_left_out || argument.starts_with("--only=") || argument.starts_with("--strictness=") ||
            argument.starts_with("--format="))
            continue;
        line += ' ' + quoted(argument);
    }
    return line;
}

std::string text_of(const TestResult& result, const CheckOptions& options) {
    std::string text = padded(words(result.verdict), 15) + result.test->id + ": " + result.test->sentence;
    if (!result.reason.empty()) text += ": " + printable(result.reason);
    text += '\n';
    if (!is_bad(result.verdict)) return text;
    text += "    again: " + printable(repeating(result, options)) + '\n';
    if (!result.journal.empty()) text += "    journal: " + printable(result.journal) + '\n';
    std::istringstream printed(result.printed);
    constexpr int kMostLines = 40;
    int lines = 0;
    for (std::string line; lines < kMostLines && std::getline(printed, line); ++lines)
        text += "    it printed: " + printable(line) + '\n';
    return text;
}

std::string text_summary(const Totals& totals) {
    const Examination& examination = totals.examination;
    std::string text;
    if (!examination.not_offered.empty()) {
        text += "not offered by this host:";
        for (std::size_t i = 0; i < examination.not_offered.size(); ++i)
            text += (i == 0 ? " " : ", ") + printable(examination.not_offered[i]);
        text += '\n';
    }
    return text + std::to_string(examination.results.size()) + " tests, " + std::to_string(examination.visits) +
           " processes, " + std::to_string(examination.faults) + " of them with a fault, " +
           host::base::fixed_text(totals.seconds, 1) + " s\n";
}

}  // namespace validator
