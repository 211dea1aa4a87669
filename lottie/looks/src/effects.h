// What effects and layer styles do to the picture of a layer.
#pragma once

#include "layer.h"

namespace lottie::looks {

// Of those that act on each pixel by itself, the picture of a stack is that of its layers.
enum class EffectReach { nothing, each_pixel, elsewhere };
EffectReach reach_of(const Json& effect);

bool do_players_draw(const Json& style);

// Whether players draw any of a layer's effects and styles.
bool is_picture_changed(const SceneLayer& layer);

}  // namespace lottie::looks
