// How far texts reach.
#pragma once

#include "glyphs.h"
#include "hull.h"
#include "layer.h"

namespace lottie::looks {

// In the coordinates of the text's layer. Told from the letters where the file brings them along, else estimated from
// the text's size; animated letters may be anywhere where their animators can put them.
Hull text_reach(const SceneLayer& layer, const Glyphs& glyphs, double frame);

bool is_text_animated(const SceneLayer& layer);

}  // namespace lottie::looks
