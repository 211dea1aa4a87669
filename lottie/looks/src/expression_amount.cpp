// Expressions that work out a number from their property's value, other numbers and controls, told from their text.
#include "expression_amount.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "expression_reader.h"

namespace lottie::looks {
namespace {

std::optional<double> plain_number(const std::string& word) {
    const bool is_octal = word.size() > 1 && word[0] == '0' && word[1] != '.';
    char* end = nullptr;
    const double number = std::strtod(word.c_str(), &end);
    return is_number(word) && !is_octal && *end == '\0' ? std::optional(number) : std::nullopt;
}

ValueRange around(const std::array<double, 4>& corners) {
    const auto [least, most] = std::minmax_element(corners.begin(), corners.end());
    return {*least, *most};
}

class AmountReader : ExpressionReader {
  public:
    using Controls = std::function<std::optional<ValueRange>(const Control&)>;

    AmountReader(std::string_view text, double value, const Controls& controls)
        : ExpressionReader(text), value_(value), controls_(controls) {}

    std::optional<ValueRange> read() const {
        const auto given = result();
        if (!given || !begins_with_it(given->first)) return std::nullopt;
        const auto range = read(given->first, given->second, 0);
        return range && std::isfinite(range->least) && std::isfinite(range->most) ? range : std::nullopt;
    }

  private:
    static constexpr int kDeepest = 8;

    // Nothing else is done before the value is given.
    bool begins_with_it(std::size_t begin) const {
        if (begin == 0) return true;
        const std::size_t declared = is_word(0, "var") && is_word(1, "$bm_rt") && is_mark(2, ";") ? 3 : 0;
        return begin == declared + 2;
    }

    std::optional<ValueRange> read(std::size_t begin, std::size_t end, int depth) const {
        if (begin >= end || depth > kDeepest) return std::nullopt;
        if (is_mark(begin, "(") && behind(begin) == end) return read(begin + 1, end - 1, depth + 1);
        if (is_mark(begin, "-") && !is_mark(begin + 1, "-")) return negative(read(begin + 1, end, depth + 1));
        if (begin + 1 == end) return read_word(begin);
        const std::string& function = tokens_[begin].text;
        if (!is_mark(begin + 1, "(") || behind(begin + 1) != end) return read_control(begin, end);
        if (function == "$bm_neg") return negative(read(begin + 2, end - 1, depth + 1));
        const std::size_t comma = comma_after(begin + 2, end);
        if (comma >= end) return std::nullopt;
        const auto a = read(begin + 2, comma, depth + 1);
        const auto b = read(comma + 1, end - 1, depth + 1);
        return a && b ? combined(function, *a, *b) : std::nullopt;
    }

    std::optional<ValueRange> read_word(std::size_t i) const {
        if (is_word(i, "value")) return ValueRange{value_, value_};
        if (tokens_[i].kind != ExpressionTokenKind::word) return std::nullopt;
        const auto number = plain_number(tokens_[i].text);
        return number ? std::optional(ValueRange{*number, *number}) : std::nullopt;
    }

    static std::optional<ValueRange> negative(const std::optional<ValueRange>& range) {
        return range ? std::optional(ValueRange{-range->most, -range->least}) : std::nullopt;
    }

    static std::optional<ValueRange> combined(const std::string& function, const ValueRange& a, const ValueRange& b) {
        if (is_one_of(function, {"add", "sum", "$bm_sum"})) return ValueRange{a.least + b.least, a.most + b.most};
        if (is_one_of(function, {"sub", "$bm_sub"})) return ValueRange{a.least - b.most, a.most - b.least};
        if (is_one_of(function, {"mul", "$bm_mul"})) {
            return around({a.least * b.least, a.least * b.most, a.most * b.least, a.most * b.most});
        }
        const bool is_division = is_one_of(function, {"div", "$bm_div"}) && (b.least > 0 || b.most < 0);
        if (!is_division) return std::nullopt;
        return around({a.least / b.least, a.least / b.most, a.most / b.least, a.most / b.most});
    }

    // comp("Name").layer("Name").effect("Name")("Name"), or one of the own composition or layer.
    std::optional<ValueRange> read_control(std::size_t i, std::size_t end) const {
        Control control;
        const bool is_elsewhere = is_word(i, "comp") && is_call_by_name(i);
        if (is_elsewhere) control.composition = tokens_[i + 2].text;
        if (is_elsewhere || is_word(i, "thisComp")) {
            i += is_elsewhere ? 5 : 2;
            if (!is_mark(i - 1, ".") || !is_word(i, "layer") || !is_call_by_name(i)) return std::nullopt;
            control.layer = tokens_[i + 2].text;
            i += 5;
        } else if (is_word(i, "thisLayer")) {
            i += 2;
        }
        if (!is_word(i, "effect")) return std::nullopt;
        const auto effect = key_at(i + 1);
        const auto parameter = key_at(i + 4);
        if (!effect || !parameter || end != i + 7) return std::nullopt;
        control.effect = *effect;
        control.parameter = *parameter;
        return controls_(control);
    }

    bool is_call_by_name(std::size_t i) const { return is_mark(i + 1, "(") && is_string(i + 2) && is_mark(i + 3, ")"); }

    // ("Name") or (1)
    std::optional<Control::Key> key_at(std::size_t i) const {
        if (!is_mark(i, "(") || !is_mark(i + 2, ")")) return std::nullopt;
        if (is_string(i + 1) && !tokens_[i + 1].text.empty()) return Control::Key{tokens_[i + 1].text, 0};
        const auto number = plain_number(tokens_[i + 1].text);
        return number ? std::optional(Control::Key{"", *number}) : std::nullopt;
    }

    double value_;
    const Controls& controls_;
};

}  // namespace

std::optional<ValueRange> range_of(std::string_view expression, double value,
                                   const std::function<std::optional<ValueRange>(const Control&)>& control) {
    return AmountReader(expression, value, control).read();
}

}  // namespace lottie::looks
