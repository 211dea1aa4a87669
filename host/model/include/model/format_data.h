// What a file format keeps beside the objects it made. The model hands it on and never looks inside.
#pragma once

#include <memory>

namespace host::model {

class Layer;

struct FormatData {
    virtual ~FormatData() = default;
};

// Streams and effects of a layer that nobody has asked for yet. Copies of a layer share it.
struct LayerContent : FormatData {
    // Fills streams and effects through the layer's load_ functions; called at most once per layer object that it
    // succeeds for. The layer may have been moved, renamed, copied to another composition since it was read: keyframe
    // times are to be taken against the offset the content itself came with, never the layer's present one. Layer ids
    // in parameters may be those of the original composition; the model sorts them out. Throws Error when the stored
    // form is unusable.
    virtual void load(Layer& layer) const = 0;
    virtual bool has_expressions() const = 0;
    virtual bool has_layer_parameters() const = 0;  // effect parameters that name a layer
};

}  // namespace host::model
