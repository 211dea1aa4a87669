// Whether the layers that came out of a nest hold what it did to them as a group.
#pragma once

#include "unnesting.h"

namespace lottie::looks {

// Whether each layer that is drawn has its own opacity times the nest's at every frame at which the nest is seen, and
// no two pictures lie over one another while the nest's is below 100 %: then fading them one by one is fading the
// group.
bool holds_opacity(Unnesting& unnesting);

}  // namespace lottie::looks
