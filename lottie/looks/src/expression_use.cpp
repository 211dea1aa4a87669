// What an expression asks of its surroundings, told from its text.
#include "expression_use.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <optional>

#include "model/expression_text.h"
#include "model/expression_tokens.h"

namespace lottie::looks {
namespace {

using host::model::ExpressionToken;
using host::model::ExpressionTokenKind;

// What these stand for hangs on the property or its layer, where they have no owner.
constexpr std::string_view kOwnWords[] = {"value",
                                          "thisProperty",
                                          "this",
                                          "eval",
                                          "Function",
                                          "valueAtTime",
                                          "wiggle",
                                          "temporalWiggle",
                                          "smooth",
                                          "loopIn",
                                          "loopOut",
                                          "loopInDuration",
                                          "loopOutDuration",
                                          "key",
                                          "nearestKey",
                                          "numKeys",
                                          "velocity",
                                          "velocityAtTime",
                                          "speed",
                                          "speedAtTime",
                                          "position",
                                          "transform",
                                          "propertyGroup",
                                          "toComp",
                                          "toWorld",
                                          "toCompVec",
                                          "toWorldVec",
                                          "fromComp",
                                          "fromWorld",
                                          "fromCompVec",
                                          "fromWorldVec",
                                          "fromCompToSurface",
                                          "sourceRectAtTime",
                                          "globalThis",
                                          "window"};
// What a layer is placed by as well, where they have one.
constexpr std::string_view kLayerWords[] = {"layer", "content", "parent", "scale", "rotation", "anchorPoint"};

template <class Words>
bool is_one_of(std::string_view word, const Words& words) {
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}
bool is_one_of(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

bool is_number(const std::string& word) {
    return !word.empty() && word.front() >= '0' && word.front() <= '9';
}

class Reader {
  public:
    explicit Reader(std::string_view text) : tokens_(host::model::tokenize_expression(text)) { find_assignments(); }

    ExpressionUse read() {
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (tokens_[i].kind != ExpressionTokenKind::word) continue;
            if (is_one_of(tokens_[i].text, kOwnWords) || is_one_of(tokens_[i].text, kLayerWords)) {
                use_.reads_layers = true;
            }
            if (is_member(i)) {
                read_member(i);
            } else {
                read_name(i);
            }
        }
        return use_;
    }

  private:
    bool is_mark(std::size_t i, std::string_view mark) const {
        return i < tokens_.size() && tokens_[i].kind == ExpressionTokenKind::mark && tokens_[i].text == mark;
    }
    bool is_member(std::size_t i) const { return i > 0 && (is_mark(i - 1, ".") || is_mark(i - 1, "?.")); }
    bool is_call(std::size_t i) const { return is_mark(i + 1, "("); }
    std::string_view owner(std::size_t i) const {
        return i >= 2 && tokens_[i - 2].kind == ExpressionTokenKind::word ? std::string_view(tokens_[i - 2].text)
                                                                          : std::string_view();
    }

    void read_name(std::size_t i) {
        const std::string& word = tokens_[i].text;
        if (word == "time") use_.reads_time = true;
        if (word == "index") use_.reads_index = true;
        if (asks_own_layer(i)) use_.reads_own_value = true;
        if (!is_call(i)) return;
        if (is_one_of(word, {"wiggle", "valueAtTime", "velocityAtTime", "speedAtTime", "posterizeTime"})) {
            use_.reads_time = true;
        }
        if (is_one_of(word, {"key", "nearestKey"})) use_.is_relative_to_keys = true;
        if (is_one_of(word, {"random", "gaussRandom", "wiggle"})) use_.is_random = true;
        if (word == "seedRandom") use_.is_seeded = true;
        if (word == "comp") read_composition(i);
    }

    // Effects and contents aside.
    bool asks_own_layer(std::size_t i) const {
        const std::string& word = tokens_[i].text;
        if (word == "thisLayer") return !(is_mark(i + 1, ".") && is_effect_call(i + 2));
        return is_one_of(word, kOwnWords);
    }
    bool is_effect_call(std::size_t i) const {
        return i < tokens_.size() && tokens_[i].text == "effect" && is_mark(i + 1, "(");
    }

    void read_member(std::size_t i) {
        const std::string& word = tokens_[i].text;
        const std::string_view of = owner(i);
        if (word == "layer" && is_call(i)) {
            read_layer(i);
        } else if (of == "thisComp") {
            use_.composition_members.push_back(word);
        } else if (of == "thisLayer" && word == "index") {
            use_.reads_index = true;
        } else if (is_call(i) && is_one_of(word, {"wiggle", "valueAtTime", "velocityAtTime", "speedAtTime"})) {
            use_.reads_time = true;
            use_.is_random = use_.is_random || word == "wiggle";
        } else if (is_call(i) && is_one_of(word, {"key", "nearestKey"})) {
            use_.is_relative_to_keys = true;
        }
    }

    // What the argument at `i` of a call stands for: a string, or a variable that is given one string and nothing else.
    std::optional<std::string> argument(std::size_t i) const {
        if (i >= tokens_.size()) return std::nullopt;
        if (tokens_[i].kind == ExpressionTokenKind::string) return tokens_[i].text;
        if (tokens_[i].kind != ExpressionTokenKind::word || !is_mark(i + 1, ")")) return std::nullopt;
        const auto assigned = assigned_.find(tokens_[i].text);
        return assigned == assigned_.end() ? std::nullopt : assigned->second;
    }

    void find_assignments() {
        for (std::size_t at = 0; at + 1 < tokens_.size(); ++at) {
            if (tokens_[at].kind != ExpressionTokenKind::word) continue;
            const bool is_given = is_mark(at + 1, "=");
            const bool is_changed = tokens_[at + 1].kind == ExpressionTokenKind::mark && is_mark(at + 2, "=");
            if (!is_given && !is_changed) continue;
            const bool is_string =
                is_given && is_mark(at + 3, ";") && tokens_[at + 2].kind == ExpressionTokenKind::string;
            const std::optional<std::string> value = is_string ? std::optional(tokens_[at + 2].text) : std::nullopt;
            const auto [assigned, is_new] = assigned_.emplace(tokens_[at].text, value);
            if (!is_new && assigned->second != value) assigned->second.reset();
        }
    }

    // comp("Name") in comp("Name").layer(1), which `i` is the member of.
    std::optional<std::string> named_composition(std::size_t i) const {
        const bool is_call =
            i >= 5 && is_mark(i - 2, ")") && is_mark(i - 4, "(") && tokens_[i - 5].text == "comp" && !is_member(i - 5);
        return is_call ? argument(i - 3) : std::nullopt;
    }

    void read_layer(std::size_t i) {
        if (i + 3 >= tokens_.size() || !is_mark(i + 3, ")")) {
            use_.has_computed_layer = true;
        } else if (tokens_[i + 2].kind == ExpressionTokenKind::string) {
            // Names are looked at with all other names.
            const auto composition = named_composition(i);
            const bool is_contents = is_mark(i + 4, ".") && i + 5 < tokens_.size() &&
                                     is_one_of(tokens_[i + 5].text, {"effect", "content", "transform", "text"});
            if (composition && is_contents) use_.layers_elsewhere.emplace_back(*composition, tokens_[i + 2].text);
        } else if (is_number(tokens_[i + 2].text)) {
            const double number = std::strtod(tokens_[i + 2].text.c_str(), nullptr);
            if (const auto name = named_composition(i)) {
                use_.layer_numbers_elsewhere.emplace_back(*name, number);
            } else {
                use_.layer_numbers.push_back(number);
            }
        } else {
            use_.has_computed_layer = true;
        }
    }

    void read_composition(std::size_t i) { use_.compositions.push_back(argument(i + 2).value_or("")); }

    std::vector<ExpressionToken> tokens_;
    // What variables are given: none where it is no string, or not one alone.
    std::map<std::string_view, std::optional<std::string>> assigned_;
    ExpressionUse use_;
};

}  // namespace

ExpressionUse read_expression(std::string_view text) {
    return Reader(text).read();
}

bool is_independent_of_own_value(std::string_view expression, std::string_view layer) {
    const ExpressionUse use = read_expression(expression);
    if (use.reads_own_value || use.has_computed_layer || !use.layer_numbers.empty()) return false;
    return host::model::find_quoted(expression, layer).empty();
}

}  // namespace lottie::looks
