// Keeping a layer in place while its parent changes.
#pragma once

namespace host::model {

class Layer;

// Rewrites the child's position, scale and rotation streams, every keyframe alike, so that with `new_parent` (null for
// none) it looks at the composition's current time as it did with its present parent. The parent link itself is the
// caller's. Shear, which layers cannot hold, is lost: the x axis decides rotation and width. Results are rounded to
// 1e-6; streams that would not change keep their data.
void compensate_for_parent(Layer& child, Layer* new_parent);

}  // namespace host::model
