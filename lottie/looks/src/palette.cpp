// The colors that an animation shows.
#include "palette.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

#include "effects.h"
#include "paint.h"

namespace lottie::looks {
namespace {

constexpr double kLevels = 32;  // by which channels are told apart
constexpr std::size_t kMostColors = 1000;

Values rounded(const Values& color) {
    Values result;
    std::transform(color.begin(), color.end(), result.begin(),
                   [](double part) { return std::round(part * kLevels) / kLevels; });
    return result;
}

double luma(const Values& color) {
    return 0.299 * color[0] + 0.587 * color[1] + 0.114 * color[2];
}

// Of a solid, such as "#ff0000"; nothing if it is no color.
std::optional<Values> color_of(const std::string& text) {
    if (text.size() != 7 || text[0] != '#' || text.find_first_not_of("0123456789abcdefABCDEF", 1) != std::string::npos)
        return std::nullopt;
    Values color{};
    for (std::size_t i = 0; i < color.size(); ++i)
        color[i] = static_cast<double>(std::stoi(text.substr(1 + 2 * i, 2), nullptr, 16)) / 255;
    return color;
}

}  // namespace

Contrast larger(const Contrast& a, const Contrast& b) {
    return {std::max(a.most, b.most), std::max(a.mean, b.mean), std::max(a.luma, b.luma)};
}

Palette Palette::of(const Scene& scene) {
    Palette all;
    all.add_white();
    for (const auto& [id, stack] : scene.stacks) {
        for (std::size_t place = 0; place < stack->size() && all.is_all_known_; ++place) all.add(stack->layer(place));
    }
    return all;
}

void Palette::add(const SceneLayer& layer) {
    is_all_known_ = is_all_known_ && has_taken(layer) && colors_.size() <= kMostColors;
}

void Palette::add(const Palette& other) {
    is_all_known_ = is_all_known_ && other.is_all_known_;
    colors_.insert(other.colors_.begin(), other.colors_.end());
}

bool Palette::has_taken(const SceneLayer& layer) {
    if (!layer.can_draw() || layer.type == LayerType::nest) return layer.array("ef").Empty() && layer.blend_mode == 0;
    if (is_picture_changed(layer) || layer.blend_mode != 0) return false;
    if (layer.type == LayerType::shape) return add_paints(layer.array("shapes"));
    const auto color = layer.type == LayerType::solid ? color_of(layer.color) : std::nullopt;
    if (color) colors_.insert(rounded(*color));
    return color.has_value();
}

bool Palette::add_paints(Json::ConstArray shapes) {
    return std::all_of(shapes.begin(), shapes.end(), [this](const Json& shape) {
        const std::string type = text_member(shape, "ty");
        if (type == "gr") return add_paints(array_member(shape, "it"));
        if (type != "fl" && type != "st" && type != "gf" && type != "gs") return true;
        const auto colors = colors_of(shape);
        for (const Values& color : colors) colors_.insert(rounded(color));
        return !colors.empty();
    });
}

Contrast Palette::contrast_to(const SceneLayer& layer) const {
    std::vector<Values> own;
    if (layer.type == LayerType::solid) {
        if (const auto color = color_of(layer.color)) own = {*color};
    } else if (const Json* paint = first_paint(layer.array("shapes"))) {
        own = colors_of(*paint);
    }
    return own.empty() ? Contrast{} : contrast_to(own);
}

Contrast Palette::contrast_to(const Palette& other) const {
    return other.is_all_known_ ? contrast_to(std::vector<Values>(other.colors_.begin(), other.colors_.end()))
                               : Contrast{};
}

Contrast Palette::contrast_to(const std::vector<Values>& colors) const {
    if (!is_all_known_) return {};
    Contrast contrast{0, 0, 0};
    for (const Values& color : colors) {
        for (const Values& other : colors_) {
            Values apart;
            std::transform(color.begin(), color.end(), other.begin(), apart.begin(),
                           [](double a, double b) { return std::abs(a - b); });
            contrast.most = std::max(contrast.most, *std::max_element(apart.begin(), apart.end()));
            contrast.luma = std::max(contrast.luma, std::abs(luma(color) - luma(other)));
            contrast.mean = std::max(contrast.mean, std::accumulate(apart.begin(), apart.end(), 0.0) / 3);
        }
    }
    return contrast;
}

}  // namespace lottie::looks
