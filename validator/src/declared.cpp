// What the author of a plug-in leaves undone on purpose.
#include "validator/declared.h"

#include <algorithm>
#include <sstream>

#include "base/printable.h"

namespace validator {
namespace {

struct DeclarationForm {
    const char* verb;
    bool has_kind;
    const char* word;  // before the function; null for none
};

constexpr DeclarationForm kForms[] = {{"leaves", true, "of"},       {"leaves-after-failure", true, "of"},
                                      {"frees-locked", true, "of"}, {"drops", false, nullptr},
                                      {"continues", false, "with"}, {"leaves-group-open", false, "without"}};

constexpr const char* kAnyKind = "anything";

bool is_kind(const std::string& name) {
    using host::suites::HandleKind;
    if (name == kAnyKind) return true;
    for (int kind = static_cast<int>(HandleKind::footage); kind <= static_cast<int>(HandleKind::block); ++kind)
        if (host::suites::name_of(static_cast<HandleKind>(kind)) == name) return true;
    return false;
}

// "stream value of" has two words for the kind.
std::string read_kind(std::istringstream& words, std::string& next) {
    std::string kind;
    while (words >> next && next != "of") kind += (kind.empty() ? "" : " ") + next;
    return kind;
}

[[noreturn]] void refuse(int line, const std::string& text) {
    throw DeclarationError("line " + std::to_string(line) + " is no declaration: " + host::base::in_quotes(text) +
                           "; write for example \"leaves memory of AEGP_ExecuteScript\"");
}

bool is_meant(std::string_view declared, std::string_view function) {
    if (declared.find('.') == std::string_view::npos) function = function.substr(function.find('.') + 1);
    if (declared.ends_with('*')) return function.starts_with(declared.substr(0, declared.size() - 1));
    return declared == function;
}

// "A, B"; empty if it is anything else.
std::vector<std::string> read_list(std::istringstream& words) {
    std::vector<std::string> names;
    bool goes_on = true;
    for (std::string name; words >> name;) {
        if (!goes_on) return {};
        goes_on = name.ends_with(',');
        if (goes_on) name.pop_back();
        if (name.empty()) return {};
        names.push_back(name);
    }
    return goes_on ? std::vector<std::string>() : names;
}

}  // namespace

Declared::Declared(std::string_view text) {
    std::istringstream lines{std::string(text)};
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        std::istringstream words(line.substr(0, line.find('#')));
        Line read;
        if (!(words >> read.verb)) continue;
        std::string word;
        if (read.verb == "remembers") {
            remembers_ = true;
        } else if (read.verb == "grows") {
            grows_ = true;
        } else {
            const auto* form = std::find_if(std::begin(kForms), std::end(kForms),
                                            [&](const DeclarationForm& f) { return f.verb == read.verb; });
            if (form == std::end(kForms)) refuse(number, line);
            if (form->has_kind) {
                read.kind = read_kind(words, word);
                if (!is_kind(read.kind)) refuse(number, line);
            } else if (form->word != nullptr) {
                words >> word;
            }
            const std::vector<std::string> functions = read_list(words);
            if ((form->word != nullptr && word != form->word) || functions.empty()) refuse(number, line);
            for (const std::string& function : functions) {
                read.function = function;
                lines_.push_back(read);
            }
            continue;
        }
        if (words >> word) refuse(number, line);
    }
}

bool Declared::has(std::string_view verb, std::string_view function, std::string_view kind) const {
    return std::any_of(lines_.begin(), lines_.end(), [&](const Line& line) {
        return line.verb == verb && (kind.empty() || line.kind == kind || line.kind == kAnyKind) &&
               is_meant(line.function, function);
    });
}

bool Declared::leaves(host::suites::HandleKind kind, std::string_view function) const {
    return has("leaves", function, host::suites::name_of(kind));
}

bool Declared::leaves_after_failure(host::suites::HandleKind kind, std::string_view function) const {
    return leaves(kind, function) || has("leaves-after-failure", function, host::suites::name_of(kind));
}

bool Declared::frees_locked(std::string_view function) const {
    return has("frees-locked", function);
}

}  // namespace validator
