// Whether layers inside are seen; and copies that an expression places, which players without expressions show neither
// before nor after.
#pragma once

#include "unnesting.h"

namespace lottie::looks {

// Whether a layer is drawn at a frame of its composition, and not transparent by itself.
bool is_seen(const SceneLayer& layer, double frame);

// Whether an expression alone says where the layer lies: nothing else moves it, and it gives the same whatever value
// the position holds.
bool is_placed_by_expression(const SceneLayer& layer);
// The same of a copy, before and after.
bool is_placed_by_expression(const Unnesting& u, const Copy& copy);

// Whether the copy's picture, taken to lie at the values that the file holds, is wholly outside of the nest's frame
// and of that of the composition at a frame of the latter.
bool is_out_of_sight(const Unnesting& u, const Copy& copy, double frame);

}  // namespace lottie::looks
