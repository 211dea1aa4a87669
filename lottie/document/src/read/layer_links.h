// Links between the layers of one composition: parents and mattes.
#pragma once

#include "shared/store.h"

namespace lottie::document {

// Throws InputError for links that lead nowhere or in a circle, and for numbers that two layers share.
void link_layers(const ScannedComp& scanned, StoredComp& comp, const DocumentOutline& outline);

}  // namespace lottie::document
