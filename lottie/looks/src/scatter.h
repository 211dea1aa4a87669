// Whether pictures lie so far apart that some players do not draw them as sharply together as alone.
#pragma once

#include "unnesting.h"

namespace lottie::looks {

// How many pieces players draw of what the layer shows, one over another.
std::size_t paint_count(const SceneLayer& layer);
// Whether it is one at most.
bool is_one_picture(const SceneLayer& layer);

// Browsers gather pictures that are near one another on one surface. Where a group fades, or is cut by a mask or a
// matte, several surfaces are put together between pixels, which blurs them by more than people call equal; the same
// pictures, each faded or cut by itself, are sharp. Whether the layers inside may need several surfaces at a frame of
// the nest's composition; one picture alone stays as it is. Throws TooMuchWork.
bool is_scattered(Unnesting& unnesting, double inner_frame);

}  // namespace lottie::looks
