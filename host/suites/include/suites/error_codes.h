// The error codes that this host returns, one for each kind of failure.
#pragma once

#include "A.h"
#include "AE_Effect.h"

namespace host::suites {

// A null, stale or foreign handle, a null result pointer, an index out of range, an impossible combination.
inline constexpr A_Err kBadArgument = A_Err_PARAMETER;
// Good arguments, but not in this state: a static value for a keyframed stream, a registration outside the entry point,
// a time that 32 bits cannot hold.
inline constexpr A_Err kNotAllowed = A_Err_GENERIC;
// The host does not offer the function, or only in part.
inline constexpr A_Err kNotImplemented = PF_Err_INVALID_CALLBACK;
inline constexpr A_Err kOutOfMemory = A_Err_ALLOC;
inline constexpr A_Err kWrongThread = A_Err_WRONG_THREAD;
// No suite of that name and version.
inline constexpr A_Err kNoSuchSuite = A_Err_MISSING_SUITE;
// An unknown exception inside the host.
inline constexpr A_Err kInternal = A_Err_STRUCT;

}  // namespace host::suites
