// The order of a composition's layers: position, lookup by position and moves in logarithmic time.
#pragma once

#include "model/sequence.h"

namespace host::model {

class Layer;

// Top to bottom. The marked layers are the selected ones. Does not own the layers.
using LayerStack = Sequence<Layer>;

}  // namespace host::model
