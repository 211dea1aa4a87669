// The file's kinds of layers and their switches, in the model's terms.
#include "shared/layer_types.h"

#include <charconv>

namespace lottie::document {

host::model::LayerKind kind_of_type(int type) {
    switch (type) {
        case kShapeType:
            return host::model::LayerKind::vector;
        case kTextType:
            return host::model::LayerKind::text;
        case kCameraType:
            return host::model::LayerKind::camera;
        case kLightType:
            return host::model::LayerKind::light;
        default:
            return host::model::LayerKind::av;
    }
}

std::uint32_t flags_of(const ScannedLayer& layer) {
    std::uint32_t flags = host::model::kAudioActive | host::model::kEffectsActive;
    const auto set = [&flags](bool on, host::model::LayerFlag flag) { flags |= on ? flag : 0u; };
    // The application switches a matte's own picture off.
    set(!layer.is_hidden && !layer.is_matte, host::model::kVideoActive);
    set(layer.blurs_motion, host::model::kMotionBlur);
    set(layer.collapses, host::model::kCollapse);
    set(layer.auto_orients, host::model::kAutoOrient);
    set(layer.remaps_time, host::model::kTimeRemap);
    set(layer.is_3d, host::model::kIs3D);
    set(layer.type == kNullType, host::model::kIsNull);
    return flags;
}

host::model::FootageFacts solid_facts(std::string_view color) {
    host::model::FootageFacts facts;
    facts.is_solid = true;
    facts.color = {0, 0, 0, 1};
    unsigned rgb = 0;
    const bool is_color = color.size() == 7 && color[0] == '#' &&
                          std::from_chars(color.data() + 1, color.data() + 7, rgb, 16).ptr == color.data() + 7;
    if (is_color) {
        facts.color = {((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0, 1};
    }
    return facts;
}

}  // namespace lottie::document
