// The report of `exflate check` for build servers: a suite per file, a case per nest, a failure per changed look.
#include <cstdint>

#include "base/printable.h"
#include "base/unicode.h"
#include "check/checked_file.h"
#include "shared/json_writer.h"

namespace cli {
namespace {

using lottie::looks::Verdict;
using lottie::looks::Weight;

// Characters that XML cannot hold become U+FFFD; what could steer a terminal is written as a number.
std::string escaped(const std::string& text) {
    std::string result;
    const std::string valid = valid_utf8(text);
    std::string_view rest = valid;
    while (!rest.empty()) {
        char32_t c = 0;
        const std::string_view bytes = rest.substr(0, host::base::decode_utf8(rest, c));
        const bool is_space = c == '\t' || c == '\n' || c == '\r';
        if ((c < 0x20 && !is_space) || c == 0xFFFE || c == 0xFFFF) {
            host::base::append_utf8(result, host::base::kReplacement);
        } else if (is_space || std::string_view("&<>\"").find(bytes) != std::string_view::npos ||
                   host::base::printable(bytes) != bytes) {
            result += "&#" + std::to_string(static_cast<std::uint32_t>(c)) + ";";
        } else {
            result += bytes;
        }
        rest.remove_prefix(bytes.size());
    }
    return result;
}

std::string attribute(const std::string& name, const std::string& value) {
    return " " + name + "=\"" + escaped(value) + "\"";
}

std::string reasons(const CheckedNest& nest, Weight least) {
    std::string text;
    for (const auto& finding : nest.report.findings) {
        if (finding.weight < least) continue;
        text += std::string(code(finding.reason)) + ": " + finding.sentence +
                (finding.way_out.empty() ? "" : " -> " + finding.way_out) + "\n";
    }
    return text;
}

bool is_kept(const CheckedNest& nest) {
    return nest.flattened && !nest.flattened->kept_because.empty();
}

bool fails(const CheckedNest& nest) {
    return nest.report.verdict == Verdict::changes || is_kept(nest);
}

std::string test_case(const CheckedFile& file, const CheckedNest& nest) {
    const std::string composition = nest.composition.empty() ? "" : " in " + nest.composition;
    std::string text = "    <testcase" + attribute("classname", file.name) +
                       attribute("name", "#" + std::to_string(nest.number) + " " + nest.report.name + composition);
    if (!fails(nest)) return text + "/>\n";
    const std::string first =
        is_kept(nest) ? "kept: " + nest.flattened->kept_because + "\n" : reasons(nest, Weight::change);
    const std::string message = first.substr(0, first.find('\n'));
    return text + ">\n      <failure" + attribute("type", "look-changes") + attribute("message", message) + ">" +
           escaped(first) + "</failure>\n    </testcase>\n";
}

}  // namespace

std::string check_junit(const std::vector<CheckedFile>& files) {
    std::string suites;
    std::size_t all_tests = 0;
    std::size_t all_failures = 0;
    std::size_t all_errors = 0;
    for (const CheckedFile& file : files) {
        std::string cases;
        std::size_t failures = 0;
        for (const CheckedNest& nest : file.nests) {
            cases += test_case(file, nest);
            failures += fails(nest) ? 1U : 0U;
        }
        const std::size_t errors = file.failure ? 1 : 0;
        if (file.failure) {
            cases += "    <testcase" + attribute("classname", file.name) + attribute("name", "the file") +
                     ">\n      <error" + attribute("message", file.failure->what()) + "/>\n    </testcase>\n";
        }
        const std::size_t tests = file.nests.size() + errors;
        suites += "  <testsuite" + attribute("name", file.name) + attribute("tests", std::to_string(tests)) +
                  attribute("failures", std::to_string(failures)) + attribute("errors", std::to_string(errors)) +
                  ">\n" + cases + "  </testsuite>\n";
        all_tests += tests;
        all_failures += failures;
        all_errors += errors;
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" + attribute("name", "exflate check") +
           attribute("tests", std::to_string(all_tests)) + attribute("failures", std::to_string(all_failures)) +
           attribute("errors", std::to_string(all_errors)) + ">\n" + suites + "</testsuites>\n";
}

}  // namespace cli
