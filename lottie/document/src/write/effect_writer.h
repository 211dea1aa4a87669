// A layer's effects in its text.
#pragma once

#include <string>

#include "document/patch.h"
#include "model/layer.h"
#include "read/property_reader.h"
#include "write/write_context.h"

namespace lottie::document {

class ObjectEdit;

// Edits the effects that changed and adds those that the host applied. `root` is the edit of the layer's object.
void edit_effects(Patch& patch, ObjectEdit& root, const WriteContext& context, const ReadContext& base,
                  const host::model::Layer& layer);

// All effects of a layer that is not in the file, as an array; empty if it has none.
std::string effects_text(const WriteContext& context, const host::model::Layer& layer);

}  // namespace lottie::document
