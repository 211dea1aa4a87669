// Whether layers that fade one by one look as the nest did that faded as a group.
#pragma once

#include "unnesting.h"

namespace lottie::looks {

// Why fading the layers one by one is not fading the group.
enum class FadeLoss {
    none,
    not_taken,       // a layer that is drawn has not its own opacity times the nest's
    several_paints,  // a layer has several fills and strokes, which some players fade one by one
    overlap,         // pictures lie over one another while the nest's opacity is between 0 and 100 %
    seams,           // they were cut along one another, see looks/seam.h, and the edges are too long to go unseen
    scattered,       // they lie far apart, see scatter.h
    darker,          // some players draw what is black or nearly so darker without the group, see dark_ground.h
    rounding,        // they are so large that the last bit of what players round otherwise adds up
};
FadeLoss fade_loss(Unnesting& unnesting);

// Whether the layers of a nest take so much of the picture that it tells how players round them: one by one, or as a
// group. At a frame of the nest's stack, which is that frame inside.
bool is_large_fade(Survey& stack, std::size_t nest, Survey& inside, double frame, double inner_frame);

// Whether of two pictures that reach so far the lower one may show through the upper one while they fade.
bool may_show_through(const Hull& a, const Hull& b);

}  // namespace lottie::looks
