// Where the values of effects' controls lie that expressions ask for.
#include "control_range.h"

#include <algorithm>

namespace lottie::looks {
namespace {

// As players look: the first that goes by that name or number.
const Json* find(Json::ConstArray effects, const Control::Key& key) {
    const auto found = std::find_if(effects.begin(), effects.end(), [&key](const Json& effect) {
        if (key.name.empty()) return number_member(effect, "ix", 0) == key.number;
        return text_member(effect, "nm") == key.name || text_member(effect, "mn") == key.name;
    });
    return found == effects.end() ? nullptr : &*found;
}

bool has_one_number(const Json& parameter) {
    constexpr double kSlider = 0, kAngle = 1, kCheckbox = 4, kMenu = 7;
    const double type = number_member(parameter, "ty", -1);
    return type == kSlider || type == kAngle || type == kCheckbox || type == kMenu;
}

}  // namespace

std::optional<ValueRange> range_of_control(Survey& survey, const SceneLayer& layer, const Control& control) {
    Survey* stack = control.composition ? survey.main_composition(*control.composition) : &survey;
    if (stack == nullptr) return std::nullopt;
    const SceneLayer* holder = &layer;
    if (control.layer) {
        const auto place = stack->layer_named(*control.layer);
        if (!place) return std::nullopt;
        holder = &stack->stack().layer(*place);
    }
    const Json* effect = find(holder->array("ef"), control.effect);
    const Json* parameter = effect == nullptr ? nullptr : find(array_member(*effect, "ef"), control.parameter);
    if (parameter == nullptr || !has_one_number(*parameter)) return std::nullopt;
    const Json* value = member(*parameter, "v");
    if (value == nullptr || (!has_number(*value, "k") && !is_keyed(*value))) return std::nullopt;
    const Property property(value, {});
    return property.has_expression() ? std::nullopt : property.range();
}

}  // namespace lottie::looks
