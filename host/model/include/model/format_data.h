// Data that a file format attaches to the objects it creates. The model passes it on and never looks inside.
#pragma once

#include <memory>

namespace host::model {

class Layer;

struct FormatData {
    virtual ~FormatData() = default;
};

// A layer's streams and effects, not loaded yet. Copies of a layer share it.
struct LayerContent : FormatData {
    // Adds streams and effects through the layer's load_ functions; succeeds at most once per layer object. The layer
    // may have been moved, renamed or copied to another composition since it was read: keyframe times are relative to
    // the offset in the file, not the layer's current one. Layer ids in parameters may be those of the original
    // composition; the model adjusts them. Throws Error if the stored form is unusable.
    virtual void load(Layer& layer) const = 0;
    virtual bool has_expressions() const = 0;
    virtual bool has_layer_parameters() const = 0;  // effect parameters that name a layer
};

}  // namespace host::model
