// Layers that are not in the file, as an exporter would write them.
#pragma once

#include <string>

#include "model/layer.h"
#include "write/write_context.h"

namespace lottie::document {

std::string new_layer_text(const WriteContext& context, host::model::Layer& layer, const host::model::Layer* above);

}  // namespace lottie::document
