// Walking through JSON text without making values of it: whoever wants a value reads its piece.
#pragma once

#include <string>
#include <string_view>

namespace lottie::looks {

// What a skipped value may hold. False is certain; true wants a closer look.
struct Contents {
    bool expressions = false;
    bool keyframes = false;
};

// Members and elements are met in order; each value must be skipped or entered before the next one is asked for. Of
// what is skipped only strings and brackets are looked at. Throws std::runtime_error for text that is not JSON there.
class TextReader {
  public:
    explicit TextReader(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

    // After an opening bracket, false at once when it is another kind of value, which is then skipped.
    bool enter_object() { return enter('{'); }
    bool enter_array() { return enter('['); }
    // False at the closing bracket, which is then passed.
    bool next_member(std::string& key);
    bool next_element() { return next(']'); }

    // The text of the value here.
    std::string_view skip(Contents& contents);
    std::string_view skip();
    // Skips the value if its text is just that: much cheaper than to find its end.
    bool skip_if(std::string_view likely);

    // The first character of the value here.
    char peek();
    const char* position() const { return at_; }

  private:
    bool enter(char bracket);
    bool next(char bracket);
    void pass_space();
    std::string_view pass_string();  // without its quotes
    void pass_scalar();
    void look_at_key(std::string_view key, Contents& contents) const;
    [[noreturn]] static void refuse();

    const char* at_;
    const char* end_;
    bool is_first_ = false;  // the container was just entered
};

// Values of scalars as read above. What has another form is `missing`.
double number_of(std::string_view text, double missing);
bool is_number(std::string_view text);
std::string string_of(std::string_view text);  // decoded; empty for anything else
// Players take numbers other than 0 and true alike.
bool is_truthy(std::string_view text);

}  // namespace lottie::looks
