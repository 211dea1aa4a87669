// Suite tables whose slots call the ReplayHost.
#pragma once

#include <cstdint>
#include <string_view>

#include "SPBasic.h"

namespace host::journal {

// Null if there is no suite of that name and version.
const void* replay_table(std::string_view name, std::int32_t version);

SPBasicSuite* replay_basic_suite();

}  // namespace host::journal
