// The report of `exflate check` for build servers: a suite per file, a case per nest, a failure per changed look.
#include "base/printable.h"
#include "check/checked_file.h"
#include "shared/json_writer.h"

namespace cli {
namespace {

using lottie::looks::Verdict;
using lottie::looks::Weight;

std::string attribute(const std::string& name, const std::string& value) {
    return " " + name + "=\"" + host::base::xml_text(value) + "\"";
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
           host::base::xml_text(first) + "</failure>\n    </testcase>\n";
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
