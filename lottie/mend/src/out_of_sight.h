// Layers that the nest's frame hid from players without expressions.
#pragma once

#include "unnested.h"

namespace lottie::mend {

// Where an expression places a layer whatever its position holds, and that position lies outside of the nest's frame,
// players without expressions showed nothing of it: moves the position out of the composition's frame.
void put_out_of_sight(Unnested& unnested, Nest& nest);

}  // namespace lottie::mend
