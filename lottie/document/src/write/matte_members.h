// How a layer's matte, and being a matte, is told in the file.
#pragma once

#include "model/layer.h"
#include "shared/store.h"

namespace lottie::document {

// Whether the layer's text must name its matte, because the file names it or because the matte is not directly above.
// `above` is null for the topmost layer.
bool names_matte(const host::model::Layer& layer, const host::model::Layer* above);

// Whether a layer that says it uses a matte, but has none, may go on saying so: only while nothing stands above it.
bool keeps_empty_matte(const host::model::Layer& layer, const StoredLayer& base, const host::model::Layer* above);

// Whether the text marks the layer as a matte (`td`), and as switched off (`hd`).
struct MatteMarks {
    bool is_matte = false;
    bool is_hidden = false;
};
MatteMarks marks_of(const host::model::Layer& layer, const StoredLayer& base);

}  // namespace lottie::document
