// Reading the outline of a text that is known to be one of an animation.
#include "base/json_marks.h"
#include "document/json_text.h"
#include "document/outline_reader.h"
#include "read/scanner.h"
#include "shared/refuse.h"

namespace lottie::document {
namespace {

bool is_blank(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

// Tells the scanner what the JSON reader would, but nothing of what it only notes.
class KnownText {
  public:
    KnownText(const std::string& text, DocumentOutline& outline)
        : text_(text),
          at_(text.c_str() + std::min(text.find('{'), text.size())),
          end_(text.c_str() + text.size()),
          stream_(text.c_str(), at_),
          scanner_(text, stream_, outline) {}

    void read() { read_value(); }

  private:
    // Containers within containers are only noted, so this calls itself but a few times.
    void read_value() {
        switch (here()) {
            case '{':
                open();
                scanner_.StartObject();
                read_members();
                scanner_.EndObject(0);
                return;
            case '[':
                open();
                scanner_.StartArray();
                read_elements();
                scanner_.EndArray(0);
                return;
            case '"': {
                const std::string_view inside = pass_string();
                scanner_.String(inside.data(), static_cast<unsigned>(inside.size()), false);
                return;
            }
            default:
                return read_plain();
        }
    }

    void open() { go_to(at_ + 1); }

    void read_members() {
        if (scanner_.is_noting()) return pass_noted();
        while (comes_next('}')) {
            const std::string_view key = pass_string();
            scanner_.Key(key.data(), static_cast<unsigned>(key.size()), false);
            if (here() != ':') refuse_text();
            ++at_;
            read_value();
        }
    }

    void read_elements() {
        if (scanner_.is_noting()) return pass_noted();
        while (comes_next(']')) read_value();
    }

    // False at the closing bracket, which is then passed.
    bool comes_next(char bracket) {
        if (here() == ',') ++at_;
        if (here() != bracket) return true;
        go_to(at_ + 1);
        return false;
    }

    void read_plain() {
        const char first = *at_;
        const char* end = at_;
        while (end != end_ && *end != ',' && *end != '}' && *end != ']' && !is_blank(*end)) ++end;
        if (end == at_) refuse_text();
        go_to(end);
        if (first == 'n') {
            scanner_.Null();
        } else if (first == 't' || first == 'f') {
            scanner_.Bool(first == 't');
        } else {
            scanner_.Int(0);
        }
    }

    // The stream stands behind the opening bracket.
    void pass_noted() {
        bool has_expressions = false;
        bool has_layer_parameters = false;
        const char* behind = host::base::behind_json_container(at_ - 1, end_, "xt", [&](std::string_view string) {
            const bool is_escaped = string.size() > 2 && string.find('\\') != std::string_view::npos;
            if (string != "x" && string != "ty" && !is_escaped) return;
            const char* value = value_behind(string);
            if (value == nullptr) return;
            const std::string key =
                is_escaped ? decode_string({string.data() - 1, string.size() + 2}) : std::string(string);
            if (key == "x") has_expressions = has_expressions || *value == '"';
            if (key == "ty") has_layer_parameters = has_layer_parameters || is_ten(value);
        });
        if (behind == nullptr) refuse_text();
        scanner_.note_inside(has_expressions, has_layer_parameters);
        go_to(behind);
    }

    // Of a key; null for other strings.
    const char* value_behind(std::string_view key) const {
        const char* at = key.data() + key.size() + 1;
        while (is_blank(*at)) ++at;
        if (*at != ':') return nullptr;
        ++at;
        while (is_blank(*at)) ++at;
        return at;
    }

    static bool is_ten(const char* value) {
        return value[0] == '1' && value[1] == '0' && (is_blank(value[2]) || value[2] == ',' || value[2] == '}');
    }

    char here() {
        while (is_blank(*at_)) ++at_;
        return *at_;
    }

    // What is inside of the quotes.
    std::string_view pass_string() {
        if (here() != '"') refuse_text();
        host::base::JsonMarks marks(at_, end_);
        const char* opening = marks.next();
        const char* closing = marks.closing_quote(opening);
        if (closing == end_) refuse_text();
        go_to(closing + 1);
        return {opening + 1, static_cast<std::size_t>(closing - opening - 1)};
    }

    void go_to(const char* at) {
        at_ = at;
        stream_.go_to(at);
    }

    [[noreturn]] void refuse_text() const {
        refuse(text_, static_cast<std::size_t>(at_ - text_.c_str()), "",
               "The input is not JSON: it ends in the middle.");
    }

    const std::string& text_;
    const char* at_;
    const char* end_;
    ScanStream stream_;
    Scanner scanner_;
};

}  // namespace

DocumentOutline read_known_outline(const std::string& text) {
    DocumentOutline outline;
    outline.comps.emplace_back();
    KnownText(text, outline).read();
    return outline;
}

}  // namespace lottie::document
