// Orders streams by age, so that nothing depends on addresses.
#pragma once

#include "model/stream.h"

namespace host::model {

struct StreamOrder {
    bool operator()(const Stream* a, const Stream* b) const { return a->serial() < b->serial(); }
};

}  // namespace host::model
