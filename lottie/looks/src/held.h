// Whether the layers that came out of a nest hold what it did to them as a group.
#pragma once

#include "unnesting.h"

namespace lottie::looks {

// Whether each layer that is drawn has the nest's blend mode, and no two are seen at a frame at which the nest is: then
// what the group gave with what is below is what its only layer gives.
bool holds_blend_mode(Unnesting& unnesting);

// Whether what the nest's effects did to the group they do to its layers: one is drawn at a time, whole and as large as
// it is, in a nest that the picture does not reach beyond.
bool holds_effects(Unnesting& unnesting);

}  // namespace lottie::looks
