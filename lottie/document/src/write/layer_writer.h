// One layer as the file spells it.
#pragma once

#include <string>

#include "document/output_text.h"
#include "model/layer.h"
#include "shared/store.h"
#include "write/write_context.h"

namespace lottie::document {

// Whether a layer of the file, with `above` directly above it (null for the topmost), is written with its very bytes.
bool is_untouched(const Numbering& numbers, const host::model::Layer& layer, const host::model::Layer* above);

// Any layer: one of the file, a copy of one, or one that the host made.
void write_layer(OutputText& out, const WriteContext& context, host::model::Layer& layer,
                 const host::model::Layer* above);

}  // namespace lottie::document
