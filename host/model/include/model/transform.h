// Keeps a layer in place while its parent changes.
#pragma once

namespace host::model {

class Layer;

// Changes the child's position, scale and rotation, all keyframes alike, so that with `new_parent` (or none, if null)
// it looks the same at the composition's current time. Does not change the parent itself. Shear cannot be represented
// and is lost: the x axis decides rotation and width. Results are rounded to 1e-6; unchanged streams keep their data.
void compensate_for_parent(Layer& child, Layer* new_parent);

}  // namespace host::model
