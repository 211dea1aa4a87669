// What the scripts of one file may use.
#include "cli/script_limits.h"

namespace cli {

host::script::Limits script_limits(double seconds) {
    const std::chrono::milliseconds all(static_cast<std::chrono::milliseconds::rep>(seconds * 1000));
    host::script::Limits limits;
    limits.time = all / 4;
    limits.time_of_all = std::make_shared<host::script::SharedTime>(all);
    return limits;
}

}  // namespace cli
