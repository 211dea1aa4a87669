// Arguments and results of every call as text, including the basic suite's.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "codec.h"

namespace host::journal {

std::string arguments_text(HandleNamer& namer, std::int32_t slot, const void* arguments);
std::string results_text(HandleNamer& namer, std::int32_t slot, const void* arguments);

// The arguments of the basic suite's functions.
using AcquireArguments = std::tuple<const char*, int32, const void**>;
using ReleaseArguments = std::tuple<const char*, int32>;
using AllocateArguments = std::tuple<size_t, void**>;
using FreeArguments = std::tuple<void*>;
using ReallocateArguments = std::tuple<void*, size_t, void**>;

}  // namespace host::journal
