// Layers that are not in the file, as an exporter would write them.
#pragma once

#include <string>

#include "model/layer.h"
#include "write_context.h"

namespace host::lottie {

std::string new_layer_text(const WriteContext& context, model::Layer& layer, const model::Layer* above);

}  // namespace host::lottie
