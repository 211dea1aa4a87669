// The report for programs: JSON, and the form that build servers read.
#include "base/number_text.h"
#include "base/printable.h"
#include "base/unicode.h"
#include "report/report.h"

namespace validator {
namespace {

std::string json(std::string_view text) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::string result = "\"";
    for (const char c : host::base::valid_utf8(text)) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (byte < 0x20) {
            result += std::string("\\u00") + kDigits[byte >> 4] + kDigits[byte & 15];
        } else {
            result += c;
        }
    }
    return result + '"';
}

std::string member(const char* name, const std::string& value, const char* indent) {
    return std::string(indent) + json(name) + ": " + value;
}

std::string attribute(const char* name, const std::string& value) {
    return std::string(" ") + name + "=\"" + host::base::xml_text(value) + "\"";
}

std::string junit_case(const TestResult& result, const CheckOptions& options) {
    std::string text = "    <testcase" + attribute("classname", options.request.module) +
                       attribute("name", result.test->id + ": " + result.test->sentence);
    if (result.verdict == TestVerdict::ok) return text + "/>\n";
    text += ">\n";
    const std::string message = attribute("message", result.reason);
    if (result.verdict == TestVerdict::not_applicable)
        text += "      <skipped" + message + "/>\n";
    else if (result.verdict == TestVerdict::warning)
        text += "      <system-out>" + host::base::xml_text("warning: " + result.reason) + "</system-out>\n";
    else
        text += "      <failure" + attribute("type", std::string(words(result.verdict))) + message + ">" +
                host::base::xml_text(result.reason + "\nagain: " + repeating(result, options) + "\n" + result.printed) +
                "</failure>\n";
    return text + "    </testcase>\n";
}

}  // namespace

std::string json_report(const Totals& totals, const CheckOptions& options) {
    const Examination& examination = totals.examination;
    std::string text = "{\n" + member("module", json(options.request.module), "  ") + ",\n" +
                       member("verdict", totals.bad() == 0 ? "\"pass\"" : "\"fail\"", "  ") + ",\n" +
                       member("failed", std::to_string(totals.bad()), "  ") + ",\n" +
                       member("processes", std::to_string(examination.visits), "  ") + ",\n" +
                       member("faults", std::to_string(examination.faults), "  ") + ",\n" +
                       member("seconds", host::base::fixed_text(totals.seconds, 3), "  ") + ",\n  \"notOffered\": [";
    for (std::size_t i = 0; i < examination.not_offered.size(); ++i)
        text += (i == 0 ? "" : ", ") + json(examination.not_offered[i]);
    text += "],\n  \"tests\": [\n";
    for (std::size_t i = 0; i < examination.results.size(); ++i) {
        const TestResult& result = examination.results[i];
        text += "    {\"id\": " + json(result.test->id) +
                ", \"strictness\": " + std::to_string(result.test->strictness) +
                ", \"sentence\": " + json(result.test->sentence) + ", \"verdict\": " + json(words(result.verdict)) +
                ", \"reason\": " + json(result.reason);
        if (is_bad(result.verdict)) text += ", \"again\": " + json(repeating(result, options));
        if (!result.printed.empty()) text += ", \"printed\": " + json(result.printed);
        if (!result.journal.empty()) text += ", \"journal\": " + json(result.journal);
        text += i + 1 < examination.results.size() ? "},\n" : "}\n";
    }
    return text + "  ]\n}\n";
}

std::string junit_report(const Totals& totals, const CheckOptions& options) {
    std::size_t skipped = 0;
    std::string cases;
    for (const TestResult& result : totals.examination.results) {
        cases += junit_case(result, options);
        if (result.verdict == TestVerdict::not_applicable) ++skipped;
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n  <testsuite" +
           attribute("name", options.request.module) +
           attribute("tests", std::to_string(totals.examination.results.size())) +
           attribute("failures", std::to_string(totals.bad())) + attribute("skipped", std::to_string(skipped)) +
           attribute("time", host::base::fixed_text(totals.seconds, 3)) + ">\n" + cases +
           "  </testsuite>\n</testsuites>\n";
}

}  // namespace validator
