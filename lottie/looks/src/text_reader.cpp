// Walking through JSON text without making values of it: whoever wants a value reads its piece.
#include "text_reader.h"

#include <cstring>
#include <stdexcept>

#include "base/json_marks.h"
#include "base/number_text.h"
#include "json.h"

namespace lottie::looks {
namespace {

constexpr bool is_space(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

}  // namespace

void TextReader::refuse() {
    throw std::runtime_error("the animation cannot be read");
}

void TextReader::pass_space() {
    while (at_ != end_ && is_space(*at_)) ++at_;
}

char TextReader::peek() {
    pass_space();
    if (at_ == end_) refuse();
    return *at_;
}

bool TextReader::enter(char bracket) {
    if (peek() != bracket) {
        skip();
        return false;
    }
    ++at_;
    is_first_ = true;
    return true;
}

bool TextReader::next(char bracket) {
    const char c = peek();
    if (c == bracket) {
        ++at_;
        is_first_ = false;
        return false;
    }
    if (!is_first_) {
        if (c != ',') refuse();
        ++at_;
    }
    is_first_ = false;
    return true;
}

bool TextReader::next_member(std::string& key) {
    if (!next('}')) return false;
    if (peek() != '"') refuse();
    const char* begin = at_;
    const std::string_view raw = pass_string();
    if (raw.find('\\') == std::string_view::npos) {
        key = raw;
    } else {
        key = string_of({begin, static_cast<std::size_t>(at_ - begin)});
    }
    if (peek() != ':') refuse();
    ++at_;
    return true;
}

std::string_view TextReader::pass_string() {
    const char* begin = ++at_;
    for (const char* from = begin;;) {
        const auto* quote = static_cast<const char*>(std::memchr(from, '"', static_cast<std::size_t>(end_ - from)));
        if (quote == nullptr) refuse();
        const char* before = quote;
        while (before != begin && before[-1] == '\\') --before;
        from = quote + 1;
        if ((quote - before) % 2 != 0) continue;  // an escaped one
        at_ = from;
        return {begin, static_cast<std::size_t>(quote - begin)};
    }
}

void TextReader::pass_scalar() {
    const char* begin = at_;
    while (at_ != end_ && *at_ != ',' && *at_ != '}' && *at_ != ']' && !is_space(*at_)) ++at_;
    if (at_ == begin) refuse();
}

// Members "x" that are strings are expressions, members "k" that are lists of objects are keyframes.
void TextReader::look_at_key(std::string_view key, Contents& contents) const {
    const bool is_escaped = key.find('\\') != std::string_view::npos;
    if (!is_escaped && key != "x" && key != "k") return;
    const char* behind = key.data() + key.size() + 1;
    TextReader rest({behind, static_cast<std::size_t>(end_ - behind)});
    if (rest.peek() != ':') return;
    ++rest.at_;
    const char first = rest.peek();
    if (first == '"' && (is_escaped || key == "x")) contents.expressions = true;
    if (first == '[' && (is_escaped || key == "k")) {
        ++rest.at_;
        if (rest.peek() == '{') contents.keyframes = true;
    }
}

std::string_view TextReader::skip(Contents& contents) {
    const char first = peek();
    const char* begin = at_;
    if (first == '"') {
        pass_string();
    } else if (first != '{' && first != '[') {
        pass_scalar();
    } else {
        at_ = host::base::behind_json_container(begin, end_, "xk",
                                                [&](std::string_view string) { look_at_key(string, contents); });
        if (at_ == nullptr) refuse();
    }
    return {begin, static_cast<std::size_t>(at_ - begin)};
}

std::string_view TextReader::skip() {
    Contents ignored;
    return skip(ignored);
}

bool TextReader::skip_if(std::string_view likely) {
    pass_space();
    if (likely.empty() || static_cast<std::size_t>(end_ - at_) <= likely.size()) return false;
    const char after = at_[likely.size()];
    if ((after != ',' && after != '}' && after != ']' && !is_space(after)) ||
        std::memcmp(at_, likely.data(), likely.size()) != 0) {
        return false;
    }
    at_ += likely.size();
    return true;
}

bool is_number(std::string_view text) {
    return !text.empty() && (text.front() == '-' || (text.front() >= '0' && text.front() <= '9'));
}

double number_of(std::string_view text, double missing) {
    return is_number(text) ? host::base::number_from(text).value_or(missing) : missing;
}

std::string string_of(std::string_view text) {
    if (text.size() < 2 || text.front() != '"') return {};
    if (text.find('\\') == std::string_view::npos) return std::string(text.substr(1, text.size() - 2));
    JsonDocument decoded;
    decoded.Parse(text.data(), text.size());
    return decoded.IsString() ? std::string(decoded.GetString(), decoded.GetStringLength()) : std::string();
}

bool is_truthy(std::string_view text) {
    return text == "true" || number_of(text, 0) != 0;
}

}  // namespace lottie::looks
