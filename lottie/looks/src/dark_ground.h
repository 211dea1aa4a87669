// Large plain areas that lack red, green or blue.
#pragma once

#include "unnesting.h"

namespace lottie::looks {

// Some players round the whole picture so far when they put a group into it that fades or has a matte: each channel a
// step down, and none below 0. Without the group, what lacks red, green or blue is darker against the rest. Whether a
// layer below the nest, or of another composition, has so large an area in such a color that this shows. Throws
// TooMuchWork.
bool is_ground_dark(Unnesting& unnesting);

// Whether all that a layer shows where it begins is one black area.
bool is_black(const SceneLayer& layer);

}  // namespace lottie::looks
