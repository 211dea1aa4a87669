// A layer's own streams (transform, time remapping, zoom, levels) in its text.
#pragma once

#include <string>

#include "document/patch.h"
#include "model/layer.h"
#include "read/property_reader.h"
#include "write/write_context.h"

namespace lottie::document {

class ObjectEdit;

// Edits those that changed, and turns the transform into that of a 3D or 2D layer if the layer became one. `root` is
// the edit of the layer's object.
void edit_layer_streams(Patch& patch, ObjectEdit& root, const WriteContext& context, const ReadContext& base,
                        host::model::Layer& layer);

// The transform of a layer that is not in the file, as one object.
std::string transform_text(const WriteContext& context, host::model::Layer& layer);

// A time remapping property for such a layer.
std::string time_remap_text(const WriteContext& context, host::model::Layer& layer);

// Edits expressions that stand elsewhere in the layer: in shapes, masks, text.
void edit_other_expressions(Patch& patch, const JsonTree& tree, const host::model::Layer& layer);

// Moves every keyframe of the layer, wherever it stands, by `shift`.
void shift_keyframes(Patch& patch, const ReadContext& base, host::model::Time shift);

}  // namespace lottie::document
