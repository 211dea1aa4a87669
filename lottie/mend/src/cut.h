// Masks that cut the layers out of a nest as the nest was cut.
#pragma once

#include "unnested.h"

namespace lottie::mend {

enum class FrameCut { left_aside, where_needed };

// Gives each layer that is drawn the nest's masks, in its own coordinates and behind its own; with them, if asked, the
// nest's frame where the layer reaches over its edge. Leaves alone what a list of masks cannot say, and layers whose
// place only a player knows. A layer with covers gets masks that take those away, and the frame where it needs it.
void cut_layers(Unnested& unnested, Nest& nest, FrameCut frame);

}  // namespace lottie::mend
