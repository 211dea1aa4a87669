// Whether the layers that came out of a nest hold what it did to them as a group.
#pragma once

#include "unnesting.h"

namespace lottie::looks {

// Whether each layer that is drawn has its own opacity times the nest's at every frame at which the nest is seen, and
// no two pictures lie over one another while the nest's is below 100 %: then fading them one by one is fading the
// group.
bool holds_opacity(Unnesting& unnesting);

// Whether each layer that is drawn has the nest's blend mode, and no two are seen at a frame at which the nest is: then
// what the group gave with what is below is what its only layer gives.
bool holds_blend_mode(Unnesting& unnesting);

}  // namespace lottie::looks
