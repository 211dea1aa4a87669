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
constexpr std::string_view kTransformWords[] = {"transform", "$bm_transform", "position",    "scale",
                                                "rotation",  "anchorPoint",   "anchor_point"};
constexpr std::string_view kToWords[] = {"toComp", "toWorld", "toCompVec", "toWorldVec"};
constexpr std::string_view kFromWords[] = {"fromComp", "fromWorld", "fromCompToSurface", "fromCompVec", "fromWorldVec"};
constexpr std::string_view kSpanWords[] = {"inPoint", "outPoint", "startTime", "active"};

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
        if (word == "mask" && is_call(i)) use_.reads_masks = true;
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

    std::vector<ExpressionToken> tokens_;
    // What variables are given: none where it is no string, or not one alone.
    std::map<std::string_view, std::optional<std::string>> assigned_;
    ExpressionUse use_;
    bool converts_to_ = false;
    bool converts_from_ = false;
};

// Tells how many points more a sum adds than it takes away: with one, it moves as they do.
class PointReader {
  public:
    explicit PointReader(std::string_view text) : tokens_(host::model::tokenize_expression(text)) {}

    // Where the value begins and ends, given once and at the end.
    std::optional<std::pair<std::size_t, std::size_t>> result() const {
        std::size_t begin = 0;
        std::size_t assignments = 0;
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (tokens_[i].text != "$bm_rt" || !is_mark(i + 1, "=")) continue;
            begin = i + 2;
            ++assignments;
        }
        std::size_t end = begin;
        while (end < tokens_.size() && !is_mark(end, ";")) ++end;
        if (assignments > 1 || end + 1 < tokens_.size()) return std::nullopt;
        return std::pair(begin, end);
    }

    // Nothing where there is anything but points.
    std::optional<int> count_points(std::size_t begin, std::size_t end, int depth = 0) const {
        if (begin >= end || depth > kDeepest) return std::nullopt;
        const bool is_difference = is_one_of(tokens_[begin].text, {"sub", "$bm_sub"});
        if (!is_difference && !is_one_of(tokens_[begin].text, {"add", "sum", "$bm_sum"})) {
            return is_point(begin, end) ? std::optional(1) : std::nullopt;
        }
        if (!is_mark(begin + 1, "(") || behind(begin + 1) != end) return std::nullopt;
        std::size_t comma = begin + 2;
        while (comma < end && !is_mark(comma, ",")) comma = is_opening(comma) ? behind(comma) : comma + 1;
        if (comma >= end) return std::nullopt;
        const auto first = count_points(begin + 2, comma, depth + 1);
        const auto second = count_points(comma + 1, end - 1, depth + 1);
        if (!first || !second) return std::nullopt;
        return is_difference ? *first - *second : *first + *second;
    }

    std::optional<SpelledPoint> spelled_point() const {
        const auto given = result();
        return given ? spelled_point(given->first, given->second) : std::nullopt;
    }

    bool is_loop() const {
        const auto given = result();
        if (!given || (!is_word(given->first, "loopIn") && !is_word(given->first, "loopOut"))) return false;
        const std::size_t call = given->first + 1;
        if (!is_mark(call, "(") || behind(call) != given->second) return false;
        const bool is_plain = call + 2 == given->second;
        const bool is_named = is_string(call + 1) && is_one_of(tokens_[call + 1].text, {"cycle", "pingpong"});
        return is_plain || (is_named && (call + 3 == given->second || is_mark(call + 2, ",")));
    }

    std::optional<Leader> leader() const {
        const auto given = result();
        if (!given) return std::nullopt;
        const auto [begin, end] = *given;
        const std::size_t owner = end >= 2 && is_word(end - 1, "position") && is_mark(end - 2, ".") ? end - 2 : begin;
        const bool by_transform = owner >= 2 && is_word(owner - 1, "transform") && is_mark(owner - 2, ".");
        if (const auto layer = named_layer(begin, by_transform ? owner - 2 : owner))
            return Leader{*layer, Leader::By::position, {}};
        std::size_t call = begin + 1;
        while (call < end && !(is_word(call, "toComp") && is_mark(call - 1, ".") && is_mark(call + 1, "("))) ++call;
        if (call >= end || behind(call + 1) != end) return std::nullopt;
        const bool is_variable = call == begin + 2 && tokens_[begin].kind == ExpressionTokenKind::word;
        const auto layer = is_variable ? value_of(tokens_[begin].text) : std::pair(begin, call - 1);
        const auto name = layer ? named_layer(layer->first, layer->second) : std::nullopt;
        if (!name) return std::nullopt;
        const std::size_t point = call + 2;
        if (const auto spelled = spelled_point(point, end - 1); spelled && spelled->numbers[0] && spelled->numbers[1])
            return Leader{*name, Leader::By::point, {*spelled->numbers[0], *spelled->numbers[1]}};
        if (!is_variable || !is_on_path(tokens_[begin].text, point, end - 1)) return std::nullopt;
        return Leader{*name, Leader::By::path, {}};
    }

  private:
    static constexpr int kDeepest = 8;

    bool is_mark(std::size_t i, std::string_view mark) const {
        return i < tokens_.size() && tokens_[i].kind == ExpressionTokenKind::mark && tokens_[i].text == mark;
    }
    bool is_word(std::size_t i, std::string_view word) const {
        return i < tokens_.size() && tokens_[i].kind == ExpressionTokenKind::word && tokens_[i].text == word;
    }
    bool is_string(std::size_t i) const { return i < tokens_.size() && tokens_[i].kind == ExpressionTokenKind::string; }
    bool is_opening(std::size_t i) const { return is_mark(i, "(") || is_mark(i, "["); }

    // Behind the bracket that closes this one, or the end.
    std::size_t behind(std::size_t opening) const {
        std::size_t depth = 0;
        for (std::size_t i = opening; i < tokens_.size(); ++i) {
            if (is_opening(i)) ++depth;
            if ((is_mark(i, ")") || is_mark(i, "]")) && --depth == 0) return i + 1;
        }
        return tokens_.size();
    }

    // thisComp.layer("Name"), up to but not at `end`.
    std::optional<std::string> named_layer(std::size_t i, std::size_t end) const {
        const bool is_call = is_word(i, "thisComp") && is_mark(i + 1, ".") && is_word(i + 2, "layer") &&
                             is_mark(i + 3, "(") && is_string(i + 4) && is_mark(i + 5, ")") && end == i + 6;
        return is_call ? std::optional(tokens_[i + 4].text) : std::nullopt;
    }

    bool is_changing(std::size_t i) const {
        return i >= tokens_.size() || is_mark(i + 1, "=") ||
               is_one_of(tokens_[i].text, {"push", "pop", "shift", "unshift", "splice", "reverse", "sort", "fill"});
    }

    // What a variable stands for that is given something once, and of which nothing is changed.
    std::optional<std::pair<std::size_t, std::size_t>> value_of(std::string_view variable) const {
        std::optional<std::pair<std::size_t, std::size_t>> value;
        for (std::size_t i = 0; i + 1 < tokens_.size(); ++i) {
            if (!is_word(i, variable) || is_mark(i + 1, "(")) continue;
            if (is_mark(i + 1, "[") && !is_mark(behind(i + 1), "=")) continue;
            if (is_mark(i + 1, ".") && !is_changing(i + 2)) continue;
            if (is_mark(i + 1, "=") && !value) {
                std::size_t end = i + 2;
                while (end < tokens_.size() && !is_mark(end, ";")) ++end;
                value = {i + 2, end};
            } else if (!is_mark(i + 1, ",") && !is_mark(i + 1, ";")) {
                return std::nullopt;
            }
        }
        return value;
    }

    // [1, -2] or [value[0], 2, 0]
    std::optional<SpelledPoint> spelled_point(std::size_t begin, std::size_t end) const {
        if (!is_mark(begin, "[") || behind(begin) != end) return std::nullopt;
        std::vector<std::optional<double>> numbers;
        for (std::size_t i = begin + 1; i < end; ++i) {
            const bool is_negative = is_mark(i, "-");
            if (is_negative) ++i;
            if (!is_negative && is_word(i, "value") && is_mark(i + 1, "[") &&
                is_word(i + 2, std::to_string(numbers.size())) && is_mark(i + 3, "]")) {
                numbers.emplace_back();
                i += 4;
            } else if (i < end && tokens_[i].kind == ExpressionTokenKind::word && is_number(tokens_[i].text)) {
                numbers.emplace_back(std::strtod(tokens_[i].text.c_str(), nullptr) * (is_negative ? -1 : 1));
                ++i;
            } else {
                return std::nullopt;
            }
            if (i >= end || (!is_mark(i, ",") && i + 1 != end)) return std::nullopt;
        }
        if (numbers.size() < 2) return std::nullopt;
        return SpelledPoint{{numbers[0], numbers[1]}};
    }

    // path.pointOnPath(...) or points[1], on a path of the layer that `owner` stands for
    bool is_on_path(std::string_view owner, std::size_t begin, std::size_t end) const {
        if (tokens_[begin].kind != ExpressionTokenKind::word) return false;
        const bool is_point = is_mark(begin + 1, "[") && behind(begin + 1) == end;
        const bool is_on = is_mark(begin + 1, ".") && is_word(begin + 2, "pointOnPath") && is_mark(begin + 3, "(") &&
                           behind(begin + 3) == end;
        const auto path = is_point || is_on ? value_of(tokens_[begin].text) : std::nullopt;
        return path && is_path_of(owner, path->first, path->second, is_point);
    }

    // A path of the layer that `owner` stands for, or the points of one.
    bool is_path_of(std::string_view owner, std::size_t begin, std::size_t end, bool as_points) const {
        const bool is_content = is_mark(begin + 1, ".") && is_word(begin + 2, "content");
        const bool is_group =
            is_mark(begin + 1, "(") && is_string(begin + 2) && tokens_[begin + 2].text == "ADBE Root Vectors Group";
        if (!is_word(begin, owner) || (!is_content && !is_group)) return false;
        bool has_points = false;
        for (std::size_t i = begin + 1; i < end; ++i) {
            const ExpressionToken& token = tokens_[i];
            if (token.kind == ExpressionTokenKind::mark && !is_one_of(token.text, {".", "(", ")"})) return false;
            if (token.kind == ExpressionTokenKind::other_text) return false;
            if (token.kind != ExpressionTokenKind::word || is_number(token.text)) continue;
            has_points = has_points || token.text == "points";
            if (!is_one_of(token.text, {"content", "path", "points"})) return false;
        }
        const bool ends_with_points = has_points && is_word(end - 3, "points") && is_mark(end - 2, "(");
        return as_points ? ends_with_points : !has_points;
    }

    // A chain of names and calls that ends with one that gives a point.
    bool is_point(std::size_t begin, std::size_t end) const {
        std::string_view last;
        for (std::size_t i = begin; i < end;) {
            if (is_mark(i, "(")) {
                i = behind(i);
                continue;
            }
            if (is_one_of(tokens_[i].text, {"comp", "content", "mask", "effect"})) return false;  // of somewhere else
            if (tokens_[i].kind == ExpressionTokenKind::mark && tokens_[i].text != ".") return false;
            if (tokens_[i].kind == ExpressionTokenKind::word) last = tokens_[i].text;
            ++i;
        }
        return is_one_of(last, {"toComp", "toWorld", "position"});
    }

    std::vector<ExpressionToken> tokens_;
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

bool stays_within_keys(std::string_view text) {
    return PointReader(text).is_loop();
}

std::optional<SpelledPoint> spelled_point(std::string_view text) {
    return PointReader(text).spelled_point();
}

std::optional<Leader> leader_of(std::string_view text) {
    return PointReader(text).leader();
}

bool is_point_of_composition(std::string_view text) {
    const PointReader reader(text);
    const auto result = reader.result();
    return result && reader.count_points(result->first, result->second) == 1;
}

bool is_independent_of_own_value(std::string_view expression, std::string_view layer) {
    const ExpressionUse use = read_expression(expression);
    if (use.reads_own_value || use.has_computed_layer || !use.layer_numbers.empty()) return false;
    return host::model::find_quoted(expression, layer).empty();
}

}  // namespace lottie::looks
