// Whether the layers that came out of a nest hold what it did to them as a group.
#pragma once

#include "unnesting.h"

namespace lottie::looks {

// Why fading the layers one by one is not fading the group.
enum class FadeLoss {
    none,
    not_taken,       // a layer that is drawn has not its own opacity times the nest's
    several_paints,  // a layer has several fills and strokes, which some players fade one by one
    overlap,         // pictures lie over one another while the nest's opacity is between 0 and 100 %
    scattered,       // they lie far apart, see scatter.h
    darker,          // some players draw what is black or nearly so darker without the group, see dark_ground.h
    rounding,        // they are so large that the last bit of what players round otherwise adds up
};
FadeLoss fade_loss(Unnesting& unnesting);

// Whether each layer that is drawn has the nest's blend mode, and no two are seen at a frame at which the nest is: then
// what the group gave with what is below is what its only layer gives.
bool holds_blend_mode(Unnesting& unnesting);

// Whether what the nest's effects did to the group they do to its layers: one is drawn at a time, whole and as large as
// it is, in a nest that the picture does not reach beyond.
bool holds_effects(Unnesting& unnesting);

}  // namespace lottie::looks
