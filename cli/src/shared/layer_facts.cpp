// What a listing says about a layer or a composition.
#include "shared/layer_facts.h"

#include <cmath>

#include "base/number_text.h"
#include "cli/shared/selection.h"

namespace cli {

using host::model::LayerKind;

const char* type_of(const lottie::document::Document& document, const host::model::Layer& layer) {
    switch (layer.kind()) {
        case LayerKind::light:
            return "light";
        case LayerKind::camera:
            return "camera";
        case LayerKind::text:
            return "text";
        case LayerKind::vector:
            return "shape";
        case LayerKind::av:
            break;
    }
    if (is_nest(layer)) return "nest";
    if (layer.has_flag(host::model::kIsNull)) return "null";
    if (layer.source() != nullptr && layer.source()->footage().is_solid) return "solid";
    switch (document.facts(layer).value_or(lottie::document::LayerFacts{}).type) {
        case 2:
            return "image";
        case 6:
            return "audio";
        case 15:
            return "data";
        default:
            return "footage";
    }
}

double frames(const host::model::Comp& comp, host::model::Time time) {
    return std::round(host::model::seconds(time) * comp.frame_rate() * 1000) / 1000;
}

std::string rounded_text(double value) {
    const double rounded = std::round(value * 1000) / 1000;
    return host::base::shortest_text(rounded + 0.0);  // + 0.0 turns a negative zero into zero
}

}  // namespace cli
