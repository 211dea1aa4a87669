// Two animations frame by frame: where they differ most, and whether the eye sees it.
#pragma once

#include <vector>

#include "pictures/animation.h"
#include "pictures/picture.h"

namespace lottie::pictures {

// Measured on real files with this renderer, 400 pixels wide, over white: pairs that people call equal stay within.
bool looks_equal(const Difference& difference);

struct PictureComparison {
    int frames = 0;       // that were drawn of each
    int worst_frame = 0;  // counted as Animation::frame does
    Difference worst;
    Picture worst_before{0, 0};  // the worst frame as it was compared; empty when none was
    Picture worst_after{0, 0};
    bool looks_equal = true;  // at every frame drawn
};

// Draws the same frames of both, 400 pixels wide: all of them if they are few; else a fine comb, the frames in
// `look_at`, and finer ones around the worst frames. Frames that one animation lacks are not compared.
PictureComparison compare(const Animation& before, const Animation& after, const std::vector<int>& look_at = {});

}  // namespace lottie::pictures
