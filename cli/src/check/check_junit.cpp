// The report of `exflate check` for build servers: a suite per file, a case per nest, a failure per changed look.
#include "base/printable.h"
#include "check/checked_file.h"
#include "shared/json_writer.h"

namespace cli {
namespace {

using lottie::looks::Weight;

std::string attribute(const std::string& name, const std::string& value) {
    return " " + name + "=\"" + host::base::xml_text(value) + "\"";
}

std::string reasons(const CheckedNest& nest, Weight least) {
    std::string text;
    for (std::size_t i = 0; i < nest.report.findings.size(); ++i) {
        const auto& finding = nest.report.findings[i];
        if (finding.weight < least || nest.tolerance(i) != Tolerated::no) continue;
        text += std::string(code(finding.reason)) + ": " + finding.sentence +
                (finding.way_out.empty() ? "" : " -> " + finding.way_out) + "\n";
    }
    return text;
}

std::string test_case(const CheckedFile& file, const CheckedNest& nest) {
    const std::string composition = nest.composition.empty() ? "" : " in " + nest.composition;
    std::string text = "    <testcase" + attribute("classname", file.name) +
                       attribute("name", "#" + std::to_string(nest.number) + " " + nest.report.name + composition);
    if (!nest.fails()) return text + "/>\n";
    const std::string first =
        nest.is_kept() ? "kept: " + nest.flattened->kept_because + "\n" : reasons(nest, Weight::change);
    const std::string message = first.substr(0, first.find('\n'));
    return text + ">\n      <failure" + attribute("type", "look-changes") + attribute("message", message) + ">" +
           host::base::xml_text(first) + "</failure>\n    </testcase>\n";
}

// A file that was not fully checked is a case too.
std::string counts(const FileTotals& totals) {
    return attribute("tests", std::to_string(totals.nests + totals.failed)) +
           attribute("failures", std::to_string(totals.failing)) + attribute("errors", std::to_string(totals.failed));
}

}  // namespace

std::string check_junit(const CheckedFile& file) {
    std::string cases;
    for (const CheckedNest& nest : file.nests) cases += test_case(file, nest);
    if (file.failure) {
        cases += "    <testcase" + attribute("classname", file.name) + attribute("name", "the file") +
                 ">\n      <error" + attribute("message", file.failure->what()) + "/>\n    </testcase>\n";
    }
    return "  <testsuite" + attribute("name", file.name) + counts(file.totals()) + ">\n" + cases + "  </testsuite>\n";
}

std::string check_junit_report(const std::vector<std::string>& parts, const FileTotals& totals) {
    std::string suites;
    for (const std::string& part : parts) suites += part;
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" + attribute("name", "exflate check") +
           counts(totals) + ">\n" + suites + "</testsuites>\n";
}

}  // namespace cli
