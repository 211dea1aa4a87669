// The layer streams by number: name, type, default, and which layers have them.
#include "streams/stream_kinds.h"

#include <array>

#include "model/item.h"

namespace host::model {
namespace {

constexpr Value kFull = {{100, 100, 100, 0}};

constexpr std::array<StreamKind, kLayerStreamCount> kKinds = {{
    {"Anchor Point", StreamType::three_d_spatial},
    {"Position", StreamType::three_d_spatial},
    {"Scale", StreamType::three_d, kFull},
    {"Rotation", StreamType::one_d},
    {"Opacity", StreamType::one_d, {{100, 0, 0, 0}}},
    {"Audio Levels", StreamType::two_d},
    {"Marker", StreamType::marker},
    {"Time Remap", StreamType::one_d},
    {"X Rotation", StreamType::one_d},
    {"Y Rotation", StreamType::one_d},
    {"Orientation", StreamType::three_d_spatial},
    {"Zoom", StreamType::one_d},
    {"Depth of Field", StreamType::one_d},
    {"Focus Distance", StreamType::one_d},
    {"Aperture", StreamType::one_d},
    {"Blur Level", StreamType::one_d},
    {"Intensity", StreamType::one_d},
    {"Color", StreamType::color},
    {"Cone Angle", StreamType::one_d},
    {"Cone Feather", StreamType::one_d},
    {"Shadow Darkness", StreamType::one_d},
    {"Shadow Diffusion", StreamType::one_d},
    {"Accepts Shadows", StreamType::one_d},
    {"Accepts Lights", StreamType::one_d},
    {"Ambient", StreamType::one_d},
    {"Diffuse", StreamType::one_d},
    {"Specular Intensity", StreamType::one_d},
    {"Specular Shininess", StreamType::one_d},
    {"Casts Shadows", StreamType::one_d},
    {"Light Transmission", StreamType::one_d},
    {"Metal", StreamType::one_d},
    {"Source Text", StreamType::text_document},
    {"Iris Shape", StreamType::one_d},
    {"Iris Rotation", StreamType::one_d},
    {"Iris Roundness", StreamType::one_d},
    {"Iris Aspect Ratio", StreamType::one_d},
    {"Iris Diffraction Fringe", StreamType::one_d},
    {"Highlight Gain", StreamType::one_d},
    {"Highlight Threshold", StreamType::one_d},
    {"Highlight Saturation", StreamType::one_d},
    {"Falloff", StreamType::one_d},
    {"Falloff Start", StreamType::one_d},
    {"Falloff Distance", StreamType::one_d},
    {"Reflection Intensity", StreamType::one_d},
    {"Reflection Sharpness", StreamType::one_d},
    {"Reflection Rolloff", StreamType::one_d},
    {"Transparency", StreamType::one_d},
    {"Transparency Rolloff", StreamType::one_d},
    {"Index of Refraction", StreamType::one_d},
    {"Bevel Style", StreamType::one_d},
    {"Bevel Direction", StreamType::one_d},
    {"Bevel Depth", StreamType::one_d},
    {"Hole Bevel Depth", StreamType::one_d},
    {"Extrusion Depth", StreamType::one_d},
    {"Plane Curvature", StreamType::one_d},
    {"Plane Subdivision", StreamType::one_d},
}};

constexpr bool is_in(int number, int first, int last) {
    return number >= first && number <= last;
}

bool has_sound(const Layer& layer) {
    Item* source = layer.source();
    if (layer.kind() != LayerKind::av || source == nullptr) return false;
    return source->type() == ItemType::comp || source->footage().has_duration;
}

}  // namespace

const StreamKind& stream_kind(int number) {
    return kKinds[static_cast<std::size_t>(number)];
}

const std::shared_ptr<const StreamData>& default_stream_data(int number) {
    static const auto kAll = [] {
        std::array<std::shared_ptr<const StreamData>, kLayerStreamCount> all;
        for (std::size_t i = 0; i < all.size(); ++i) {
            auto data = std::make_shared<StreamData>();
            data->static_value = kKinds[i].default_value;
            all[i] = std::move(data);
        }
        return all;
    }();
    return kAll[static_cast<std::size_t>(number)];
}

bool is_stream_legal_for(int number, const Layer& layer) {
    const LayerKind kind = layer.kind();
    const bool is_camera = kind == LayerKind::camera;
    const bool is_light = kind == LayerKind::light;
    const bool is_picture = !is_camera && !is_light;  // has a surface
    switch (number) {
        case kAnchorPoint:
        case kPosition:
        case kRotation:
        case kMarker:
            return true;
        case kScale:
        case kOpacity:
            return is_picture;
        case kAudioLevels:
            return has_sound(layer);
        case kTimeRemapStream:
            return kind == LayerKind::av && layer.has_flag(kTimeRemap);
        case kRotateX:
        case kRotateY:
        case kOrientation:
            return layer.is_3d();
        case kCastsShadows:
            return is_light || (is_picture && layer.is_3d());
        case kSourceText:
            return kind == LayerKind::text;
        default:
            break;
    }
    if (is_in(number, kZoom, 15) || is_in(number, 32, 39)) return is_camera;
    if (is_in(number, 16, 21) || is_in(number, 40, 42)) return is_light;
    if (is_in(number, 22, 30) || is_in(number, 43, 48)) return is_picture && layer.is_3d();  // material
    return false;  // nothing here is extruded or curved
}

}  // namespace host::model
