// Signals of the process: WebAssembly has none.
#include "base/signals.h"

namespace host::base {

struct BlockTermination::State {};

void ignore_failed_write_signals() {}

BlockTermination::BlockTermination() = default;
BlockTermination::~BlockTermination() = default;

}  // namespace host::base
