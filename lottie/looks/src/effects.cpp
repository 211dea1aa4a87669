// What effects and layer styles do to the picture of a layer.
#include "effects.h"

#include <algorithm>

namespace lottie::looks {
namespace {

constexpr int kFill = 21;

// Whether all of a fill is drawn, at all times. Less of it lets layers show through one another.
bool is_full(const Json& fill) {
    constexpr rapidjson::SizeType kOpacity = 6;
    const auto parameters = array_member(fill, "ef");
    if (parameters.Size() <= kOpacity) return true;
    const Json* value = member(parameters[kOpacity], "v");
    if (value == nullptr) return true;
    return has_number(*value, "k") && number_member(*value, "k", 1) >= 1 && member(*value, "x") == nullptr;
}

}  // namespace

EffectReach reach_of(const Json& effect) {
    if (const Json* on = member(effect, "en"); on != nullptr && !is_truthy(effect, "en")) return EffectReach::nothing;
    const std::string match_name = text_member(effect, "mn");
    if (match_name.ends_with(" Control") || match_name.starts_with("Pseudo/")) return EffectReach::nothing;
    const int type = static_cast<int>(number_member(effect, "ty", 5));
    if (type == kFill && is_full(effect)) return EffectReach::each_pixel;
    return type == 5 && match_name.empty() ? EffectReach::nothing : EffectReach::elsewhere;
}

// Shadows and glows; no player draws strokes, bevels, satin and overlays.
bool do_players_draw(const Json& style) {
    const double kind = number_member(style, "ty", -1);
    return kind >= 1 && kind <= 4;
}

bool is_picture_changed(const SceneLayer& layer) {
    const auto effects = layer.array("ef");
    const auto styles = layer.array("sy");
    return std::any_of(effects.begin(), effects.end(),
                       [](const Json& effect) { return reach_of(effect) != EffectReach::nothing; }) ||
           std::any_of(styles.begin(), styles.end(), do_players_draw);
}

}  // namespace lottie::looks
