// What an expression asks of its surroundings, told from its text.
#include "expression_use.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <optional>

#include "expression_reader.h"
#include "model/expression_text.h"

namespace lottie::looks {
namespace {

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
constexpr std::string_view kTransformWords[] = {"transform", "$bm_transform", "position",    "scale",
                                                "rotation",  "anchorPoint",   "anchor_point"};
constexpr std::string_view kToWords[] = {"toComp", "toWorld", "toCompVec", "toWorldVec"};
constexpr std::string_view kFromWords[] = {"fromComp", "fromWorld", "fromCompToSurface", "fromCompVec", "fromWorldVec"};
constexpr std::string_view kSpanWords[] = {"inPoint", "outPoint", "startTime", "active"};

class Reader : ExpressionReader {
  public:
    explicit Reader(std::string_view text) : ExpressionReader(text) { find_assignments(); }

    ExpressionUse read() {
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (is_transform_group(i)) use_.reads_transforms = use_.reads_opacity = true;
            if (tokens_[i].text == "numLayers" && !named_composition(i)) use_.counts_layers = true;
            if (tokens_[i].kind != ExpressionTokenKind::word) continue;
            read_place(i);
            if (is_member(i)) {
                read_member(i);
            } else {
                read_name(i);
            }
        }
        use_.converts_points = converts_to_ != converts_from_;
        return use_;
    }

  private:
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
        // By another name, or as a function, it gives layers that nobody sees from here.
        const bool is_hidden = is_one_of(word, {"with", "eval", "Function"});
        if ((word == "thisComp" && !is_mark(i + 1, ".")) || is_hidden) use_.has_computed_layer = true;
        if ((word == "thisComp" && !is_plain_owner(i)) || is_hidden) use_.works_out_layer = true;
        if (word == "name") use_.reads_names = true;
        if (!is_call(i)) return;
        if (word == "timeToFrames" && is_mark(i + 2, ")")) use_.reads_time = true;
        if (is_one_of(word, {"wiggle", "valueAtTime", "velocityAtTime", "speedAtTime", "posterizeTime"})) {
            use_.reads_time = true;
        }
        if (is_one_of(word, {"key", "nearestKey"})) use_.is_relative_to_keys = true;
        if (is_one_of(word, {"random", "gaussRandom", "wiggle"})) use_.is_random = true;
        if (word == "seedRandom") use_.is_seeded = true;
        if (word == "comp") read_composition(i);
    }

    // Whether nothing but members and named layers are asked of what the word at `i` stands for, nor of a variable that
    // it is given another name by.
    bool is_plain_owner(std::size_t i) const {
        if (is_mark(i + 1, ".") || (is_call(i) && is_literal_argument(i + 2))) return true;
        if (i < 2 || !is_mark(i - 1, "=") || tokens_[i - 2].kind != ExpressionTokenKind::word) return false;
        if (!is_mark(i + 1, ";") && !is_mark(i + 1, ",")) return false;
        const std::string& variable = tokens_[i - 2].text;
        for (std::size_t at = 0; at < tokens_.size(); ++at) {
            if (at == i - 2 || tokens_[at].kind != ExpressionTokenKind::word || tokens_[at].text != variable) continue;
            const bool is_declared = at > 0 && is_one_of(tokens_[at - 1].text, {"var", "let", "const"});
            const bool is_asked = is_mark(at + 1, ".") || (is_call(at) && is_literal_argument(at + 2));
            if (!is_declared && !is_asked) return false;
        }
        return true;
    }
    bool is_literal_argument(std::size_t i) const {
        return is_mark(i + 1, ")") && (tokens_[i].kind == ExpressionTokenKind::string || is_number(tokens_[i].text));
    }

    // content("Name") or content(1), which `i` is the member of.
    bool is_of_content(std::size_t i) const {
        return is_member(i) && i >= 5 && is_mark(i - 2, ")") && is_mark(i - 4, "(") && tokens_[i - 5].text == "content";
    }

    // A layer's transform by the names and numbers that players know it by: thisLayer(6), layer("Name")("Transform").
    bool is_transform_group(std::size_t i) const {
        if (tokens_[i].kind == ExpressionTokenKind::string)
            return is_one_of(tokens_[i].text, {"ADBE Transform Group", "Transform", "transform"});
        if (i < 2 || !is_one_of(tokens_[i].text, {"1", "6"}) || !is_mark(i - 1, "(") || !is_mark(i + 1, ")"))
            return false;
        const bool is_of_named = i >= 5 && is_mark(i - 2, ")") && is_mark(i - 4, "(") && tokens_[i - 5].text == "layer";
        return is_of_named || is_one_of(tokens_[i - 2].text, {"thisLayer", "parent"});
    }

    void read_place(std::size_t i) {
        const std::string& word = tokens_[i].text;
        const bool is_own = !is_member(i) || owner(i) == "thisLayer";
        const bool is_of_transform = is_member(i) && owner(i) == "transform";  // which says itself whose it is
        if (is_one_of(word, kTransformWords) && !is_of_transform && !is_of_content(i)) use_.reads_transforms = true;
        if (word == "opacity") use_.reads_opacity = true;
        if (word == "mask" && is_call(i)) {
            use_.reads_masks = true;
            use_.numbers_masks = use_.numbers_masks || !is_string(i + 2);
        }
        if (is_one_of(word, kToWords)) converts_to_ = true;
        if (is_one_of(word, kFromWords)) converts_from_ = true;
        if (is_one_of(word, {"parent", "hasParent"}))
            use_.parent = std::max(use_.parent, is_own ? Whose::own : Whose::any);
        if (is_one_of(word, kSpanWords) && (is_member(i) || word != "active"))
            use_.span = std::max(use_.span, is_own ? Whose::own : Whose::any);
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
        } else if (word == "layer") {
            use_.has_computed_layer = use_.works_out_layer = true;
        } else if (of == "thisComp") {
            use_.composition_members.push_back(word);
        } else if (word == "index") {
            bool& reads = of == "thisLayer" ? use_.reads_index : use_.reads_other_index;
            reads = reads || !is_of_key(i);
        } else if (word == "name" || word == "_name") {
            use_.reads_names = true;
        } else if (is_call(i) && is_one_of(word, {"wiggle", "valueAtTime", "velocityAtTime", "speedAtTime"})) {
            use_.reads_time = true;
            use_.is_random = use_.is_random || word == "wiggle";
        } else if (is_call(i) && is_one_of(word, {"key", "nearestKey"})) {
            use_.is_relative_to_keys = true;
        }
    }

    // key(1) or nearestKey(time), which `i` is the member of.
    bool is_of_key(std::size_t i) const {
        std::size_t at = i - 2;
        if (i < 2 || !is_mark(at, ")")) return false;
        for (std::size_t depth = 0; at > 0; --at) {
            if (is_mark(at, ")")) ++depth;
            if (is_mark(at, "(") && --depth == 0) break;
        }
        return at > 0 && is_one_of(tokens_[at - 1].text, {"key", "nearestKey"});
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
            use_.has_computed_layer = use_.works_out_layer = true;
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
            use_.works_out_layer = use_.works_out_layer || !argument(i + 2);
        }
    }

    void read_composition(std::size_t i) { use_.compositions.push_back(argument(i + 2).value_or("")); }

    // What variables are given: none where it is no string, or not one alone.
    std::map<std::string_view, std::optional<std::string>> assigned_;
    ExpressionUse use_;
    bool converts_to_ = false;
    bool converts_from_ = false;
};

}  // namespace

ExpressionUse read_expression(std::string_view text) {
    return Reader(text).read();
}

bool is_carried_along(std::string_view text) {
    bool reads_value = false;
    const auto tokens = host::model::tokenize_expression(text);
    for (const ExpressionToken& token : tokens) {
        if (token.kind == ExpressionTokenKind::mark && !is_one_of(token.text, {"=", ";", "(", ")", ",", "{", "}"}))
            return false;
        if (token.kind != ExpressionTokenKind::word || is_number(token.text)) continue;
        const bool is_value =
            is_one_of(token.text, {"value", "loopIn", "loopOut", "loopInDuration", "loopOutDuration"});
        if (!is_value && !is_one_of(token.text, {"var", "$bm_rt", "true", "false"})) return false;
        reads_value = reads_value || is_value;
    }
    return reads_value;
}

bool is_own_value(std::string_view text) {
    const auto tokens = host::model::tokenize_expression(text);
    return std::all_of(tokens.begin(), tokens.end(), [](const ExpressionToken& token) {
        return is_one_of(token.text, {"var", "$bm_rt", "value", "=", ";"});
    });
}

bool is_independent_of_own_value(std::string_view expression, std::string_view layer) {
    const ExpressionUse use = read_expression(expression);
    if (use.reads_own_value || use.has_computed_layer || !use.layer_numbers.empty()) return false;
    return host::model::find_quoted(expression, layer).empty();
}

}  // namespace lottie::looks
