// Time from seconds.
#include "model/time.h"

#include <cmath>

namespace host::model {

Time from_seconds(double s) {
    return {std::llround(s * static_cast<double>(kTicksPerSecond))};
}

}  // namespace host::model
