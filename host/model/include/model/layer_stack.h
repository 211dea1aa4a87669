// The order of a composition's layers; all operations take logarithmic time.
#pragma once

#include "model/sequence.h"

namespace host::model {

class Layer;

// Top to bottom; marked layers are selected. Does not own the layers.
using LayerStack = Sequence<Layer>;

}  // namespace host::model
