// A layer's streams and effects, read when the model first asks for them.
#pragma once

#include "model/layer.h"
#include "shared/store.h"

namespace lottie::document {

// Fills `layer`, which is the stored one or a copy of it. Throws host::model::Error.
void read_content(const StoredLayer& stored, host::model::Layer& layer);

}  // namespace lottie::document
