// The file's kinds of layers and their switches, in the model's terms.
#pragma once

#include <cstdint>
#include <string_view>

#include "document/outline.h"
#include "model/item.h"
#include "model/layer.h"

namespace lottie::document {

inline constexpr int kCompType = 0;
inline constexpr int kSolidType = 1;
inline constexpr int kImageType = 2;
inline constexpr int kNullType = 3;
inline constexpr int kShapeType = 4;
inline constexpr int kTextType = 5;
inline constexpr int kCameraType = 13;
inline constexpr int kLightType = 14;

host::model::LayerKind kind_of_type(int type);
std::uint32_t flags_of(const ScannedLayer& layer);
host::model::FootageFacts solid_facts(std::string_view color);  // "#rrggbb"; anything else is black

}  // namespace lottie::document
