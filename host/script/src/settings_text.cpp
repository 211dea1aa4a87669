// The format of settings files:
//     ["section"]
//     "key" = "value"
// Inside quotes, \" and \\ stand for the character, \xHH for any byte that cannot stand in a line of text.
#include "settings_text.h"

namespace host::script {

namespace {

constexpr std::string_view kHeader =
    "# Settings that scripts keep. In quotes, \\\" \\\\ and \\xHH (a byte) stand for themselves.\n";
constexpr std::string_view kHexDigits = "0123456789abcdef";

std::string in_quotes(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (byte < 0x20 || byte == 0x7F) {
            out += "\\x";
            out += kHexDigits[byte >> 4];
            out += kHexDigits[byte & 0xF];
        } else {
            out += c;
        }
    }
    return out + '"';
}

// Parses one line from left to right.
class SettingsLine {
  public:
    explicit SettingsLine(std::string_view text) : rest_(text) {}

    bool is_at_end() {
        skip_blanks();
        return rest_.empty();
    }

    bool take(char wanted) {
        skip_blanks();
        if (!rest_.starts_with(wanted)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::optional<std::string> take_quoted() {
        if (!take('"')) return {};
        std::string out;
        while (!rest_.empty()) {
            const char c = rest_.front();
            rest_.remove_prefix(1);
            if (c == '"') return out;
            if (c != '\\') {
                out += c;
            } else if (const auto escaped = take_escaped()) {
                out += *escaped;
            } else {
                break;
            }
        }
        return {};
    }

  private:
    void skip_blanks() {
        const auto first = rest_.find_first_not_of(" \t\r");
        rest_.remove_prefix(first == std::string_view::npos ? rest_.size() : first);
    }

    std::optional<char> take_escaped() {
        if (rest_.starts_with('"') || rest_.starts_with('\\')) {
            const char c = rest_.front();
            rest_.remove_prefix(1);
            return c;
        }
        if (rest_.size() < 3 || rest_.front() != 'x') return {};
        const auto high = kHexDigits.find(rest_[1]);
        const auto low = kHexDigits.find(rest_[2]);
        if (high == std::string_view::npos || low == std::string_view::npos) return {};
        rest_.remove_prefix(3);
        return static_cast<char>(high << 4 | low);
    }

    std::string_view rest_;
};

// False unless the line is empty, a comment, a header, or a value below a header.
bool read_line(SettingsLine line, Settings::Sections& sections, Settings::Section*& current) {
    if (line.is_at_end() || line.take('#')) return true;
    if (line.take('[')) {
        const auto name = line.take_quoted();
        if (!name || !line.take(']') || !line.is_at_end()) return false;
        current = &sections[*name];
        return true;
    }
    const auto key = line.take_quoted();
    if (!key || !line.take('=')) return false;
    const auto value = line.take_quoted();
    if (!value || !line.is_at_end() || current == nullptr) return false;
    (*current)[*key] = *value;
    return true;
}

}  // namespace

std::string write_settings(const Settings::Sections& sections) {
    std::string out(kHeader);
    for (const auto& [name, section] : sections) {
        out += "\n[" + in_quotes(name) + "]\n";
        for (const auto& [key, value] : section) out += in_quotes(key) + " = " + in_quotes(value) + '\n';
    }
    return out;
}

ReadSettings read_settings(std::string_view text) {
    ReadSettings read;
    Settings::Section* current = nullptr;
    for (int number = 1; !text.empty(); ++number) {
        const auto end = text.find('\n');
        if (!read_line(SettingsLine(text.substr(0, end)), read.sections, current)) {
            read.damaged_line = number;
            read.sections.clear();
            return read;
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return read;
}

}  // namespace host::script
