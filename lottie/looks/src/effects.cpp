// What effects and layer styles do to the picture of a layer.
#include "effects.h"

#include <algorithm>

namespace lottie::looks {
namespace {

constexpr int kUnknown = 5;  // to the format
constexpr int kTint = 20;
constexpr int kFill = 21;

// Whether a property has that value, or more, at all times.
bool is_always(const Json* property, double full) {
    if (property == nullptr) return true;
    return has_number(*property, "k") && number_member(*property, "k", full) >= full &&
           member(*property, "x") == nullptr;
}

// Whether all of a fill is drawn. Less of it lets layers show through one another.
bool is_full(const Json& fill) {
    constexpr rapidjson::SizeType kOpacity = 6;
    const auto parameters = array_member(fill, "ef");
    return parameters.Size() <= kOpacity || is_always(member(parameters[kOpacity], "v"), 1);
}

bool are_opaque(Json::ConstArray shapes) {
    return std::all_of(shapes.begin(), shapes.end(), [](const Json& item) {
        const std::string kind = text_member(item, "ty");
        if (kind == "gr") return are_opaque(array_member(item, "it"));
        if (kind == "fl" || kind == "st" || kind == "tr") return is_always(member(item, "o"), 100);
        return kind != "gf" && kind != "gs" && kind != "rp";
    });
}

}  // namespace

bool is_worked_out(const Json& effect) {
    const auto parameters = array_member(effect, "ef");
    return std::any_of(parameters.begin(), parameters.end(), [](const Json& parameter) {
        const Json* value = member(parameter, "v");
        return is_worked_out(parameter) || (value != nullptr && member(*value, "x") != nullptr);
    });
}

EffectReach reach_of(const Json& effect) {
    const std::string match_name = text_member(effect, "mn");
    if (match_name.ends_with(" Control") || match_name.starts_with("Pseudo/")) return EffectReach::nothing;
    const int type = static_cast<int>(number_member(effect, "ty", kUnknown));
    // Browsers draw those that they know, on or off.
    const bool is_off = member(effect, "en") != nullptr && !is_truthy(effect, "en");
    if (is_off && type == kUnknown) return EffectReach::nothing;
    if (type == kFill && is_full(effect)) return EffectReach::each_pixel;
    if (type == kTint) return EffectReach::each_opaque_pixel;
    return type == kUnknown && match_name.empty() ? EffectReach::nothing : EffectReach::elsewhere;
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

bool is_opaque(const SceneLayer& layer) {
    const Property& opacity = layer.transform().opacity;
    if (opacity.is_animated() || opacity.has_expression() || opacity.at(0)[0] < 100) return false;
    if (layer.has_masks || layer.matte_mode != 0 || is_picture_changed(layer)) return false;
    return layer.type == LayerType::solid || (layer.type == LayerType::shape && are_opaque(layer.array("shapes")));
}

}  // namespace lottie::looks
