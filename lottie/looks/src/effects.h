// What effects and layer styles do to the picture of a layer.
#pragma once

#include "layer.h"

namespace lottie::looks {

// What acts on each pixel by itself makes of a stack what it makes of its layers. Of opaque ones only, where players
// lay the result over what was there and mix colors otherwise than layers.
enum class EffectReach { nothing, each_pixel, each_opaque_pixel, elsewhere };
EffectReach reach_of(const Json& effect);

// Whether expressions work out any of an effect's parameters.
bool is_worked_out(const Json& effect);

bool do_players_draw(const Json& style);

// Whether all that the layer draws covers what is below, edges aside. False where that cannot be told.
bool is_opaque(const SceneLayer& layer);

// Whether players draw any of a layer's effects and styles.
bool is_picture_changed(const SceneLayer& layer);

}  // namespace lottie::looks
