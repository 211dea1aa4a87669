// Fills and strokes of shape layers.
#include "paint.h"

#include <algorithm>

#include "masks.h"

namespace lottie::looks {
namespace {

bool is_color(const Values& color) {
    return std::all_of(color.begin(), color.end(), [](double part) { return part >= 0 && part <= 1; });
}

// Place, red, green and blue of each stop, and what they let through behind them; empty unless it stands still.
struct Gradient {
    explicit Gradient(const Json& paint) {
        const Json* description = member(paint, "g");
        const Json* numbers = description == nullptr ? nullptr : member(*description, "k");
        if (numbers == nullptr || is_keyed(*numbers) || member(*numbers, "x") != nullptr) return;
        for (const Json& number : array_member(*numbers, "k"))
            values.push_back(number.IsNumber() ? number.GetDouble() : -1);
        colors = static_cast<std::size_t>(std::clamp(number_member(*description, "p", 0), 0.0, 1000.0)) * 4;
        if (colors > values.size()) values.clear(), colors = 0;
    }

    std::vector<double> values;
    std::size_t colors = 0;  // of the values
};

}  // namespace

const Json* first_paint(Json::ConstArray shapes) {
    for (const Json& shape : shapes) {
        const std::string type = text_member(shape, "ty");
        if (type == "fl" || type == "st" || type == "gf" || type == "gs") return &shape;
        if (const Json* paint = first_paint(array_member(shape, "it"))) return paint;
    }
    return nullptr;
}

std::vector<Values> colors_of(const Json& paint) {
    std::vector<Values> colors;
    if (member(paint, "g") != nullptr) {
        const Gradient gradient(paint);
        for (std::size_t i = 0; i < gradient.colors; i += 4)
            colors.push_back({gradient.values[i + 1], gradient.values[i + 2], gradient.values[i + 3]});
    } else {
        const Property color(member(paint, "c"), {});
        if (!color.has_expression()) colors = color.key_values();
    }
    return std::all_of(colors.begin(), colors.end(), is_color) ? colors : std::vector<Values>();
}

bool is_opaque_fill(const Json& item) {
    const std::string type = text_member(item, "ty");
    if ((type != "fl" && type != "gf") || !is_always(Property(member(item, "o"), {100, 0, 0}), 100) ||
        number_member(item, "r", 1) == 2 ||
        (member(item, "fillEnabled") != nullptr && !is_truthy(item, "fillEnabled"))) {
        return false;
    }
    if (type == "fl") return true;
    const Gradient gradient(item);
    return gradient.colors > 0 && gradient.values.size() == gradient.colors;
}

}  // namespace lottie::looks
