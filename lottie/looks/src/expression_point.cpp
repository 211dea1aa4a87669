// Expressions that give a point, told from their text.
#include "expression_point.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

#include "expression_reader.h"

namespace lottie::looks {
namespace {

// Tells how many points more a sum adds than it takes away: with one, it moves as they do.
class PointReader : ExpressionReader {
  public:
    explicit PointReader(std::string_view text) : ExpressionReader(text) {}

    using ExpressionReader::result;

    // Nothing where there is anything but points.
    std::optional<int> count_points(std::size_t begin, std::size_t end, int depth = 0) const {
        if (begin >= end || depth > kDeepest) return std::nullopt;
        const bool is_difference = is_one_of(tokens_[begin].text, {"sub", "$bm_sub"});
        if (!is_difference && !is_one_of(tokens_[begin].text, {"add", "sum", "$bm_sum"})) {
            return is_point(begin, end) ? std::optional(1) : std::nullopt;
        }
        if (!is_mark(begin + 1, "(") || behind(begin + 1) != end) return std::nullopt;
        const std::size_t comma = comma_after(begin + 2, end);
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
};

}  // namespace

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

}  // namespace lottie::looks
