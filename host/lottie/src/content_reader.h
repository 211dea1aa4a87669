// A layer's streams and effects, read when the model first asks for them.
#pragma once

#include "model/layer.h"
#include "store.h"

namespace host::lottie {

// Fills `layer`, which is the stored one or a copy of it. Throws model::Error.
void read_content(const StoredLayer& stored, model::Layer& layer);

}  // namespace host::lottie
