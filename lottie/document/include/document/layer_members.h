// The members of a layer in the order in which exporters write them.
#pragma once

#include <span>
#include <string_view>

namespace lottie::document {

// For editing a layer: a new member goes behind those that come before it here.
std::span<const std::string_view> layer_member_order();

}  // namespace lottie::document
