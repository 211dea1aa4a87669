// Help and the manual, from the table of options.
#include <algorithm>
#include <sstream>

#include "arguments/options.h"
#include "validator/version.h"

namespace validator {
namespace {

constexpr const char* kWhat = "try a general plug-in for After Effects without the application";
constexpr const char* kMore =
    "Loads the module into a headless host, finds its commands, builds projects for them, and makes test after test, "
    "each in processes of its own. A test is ok, failed, crashed, hung, a warning, or not applicable, and says why. "
    "The last line is \"aegp-check: PASS\" or \"aegp-check: FAIL (3 of 47)\".";

std::string heading(const CheckOption& option) {
    std::string text = option.letter != '\0' ? std::string{'-', option.letter} + ", " : "";
    text += option.name;
    return option.value.empty() ? text : text + ' ' + std::string(option.value);
}

// Broken into lines of at most 90 characters that begin in that column.
std::string in_column(std::size_t column, const std::string& text) {
    std::istringstream words(text);
    std::string lines;
    std::size_t length = 0;
    for (std::string word; words >> word;) {
        if (length > 0 && column + length + 1 + word.size() > 90) {
            lines += '\n' + std::string(column, ' ');
            length = 0;
        } else if (length > 0) {
            lines += ' ';
            ++length;
        }
        lines += word;
        length += word.size();
    }
    return lines;
}

std::string roff(std::string_view text) {
    std::string result;
    for (const char c : text) result += c == '-' ? "\\-" : c == '\\' ? "\\e" : std::string(1, c);
    return result;
}

std::string item(std::string_view name, std::string_view text) {
    return ".TP\n\\fB" + roff(name) + "\\fR\n" + roff(text) + ".\n";
}

}  // namespace

std::string help_text() {
    std::string text = "aegp-check: " + std::string(kWhat) + "\n\nUsage: aegp-check [OPTION]... MODULE\n\n" +
                       in_column(0, kMore) + "\n\nOptions:\n";
    for (const CheckOption& option : all_options())
        text += "  " + heading(option) + "\n      " + in_column(6, std::string(option.text)) + ".\n";
    text += "\nExit codes:\n";
    for (const ExplainedCode& code : exit_codes())
        text += "  " + std::string(code.name) + "  " + std::string(code.text) + '\n';
    text += "\nExamples:\n";
    for (const ExplainedCode& one : examples())
        text += "  " + std::string(one.name) + "\n      " + std::string(one.text) + '\n';
    return text;
}

std::string version_text() {
    return std::string("aegp-check ") + kVersion + '\n';
}

std::string manual_page() {
    std::string text = std::string(".\\\" The manual of aegp-check.\n.TH AEGP-CHECK 1 \"\" \"aegp-check ") + kVersion +
                       "\" \"User Commands\"\n.nh\n.ad l\n.SH NAME\naegp-check \\- " + kWhat +
                       "\n.SH SYNOPSIS\n\\fBaegp\\-check\\fR [\\fIOPTION\\fR]... \\fIMODULE\\fR\n.SH DESCRIPTION\n" +
                       roff(kMore) + "\n.SH OPTIONS\n";
    for (const CheckOption& option : all_options()) text += item(heading(option), option.text);
    text += ".SH EXIT STATUS\n";
    for (const ExplainedCode& code : exit_codes()) text += item(code.name, code.text);
    text += ".SH EXAMPLES\n";
    for (const ExplainedCode& one : examples()) text += item(one.name, one.text);
    return text;
}

}  // namespace validator
