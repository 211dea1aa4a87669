// The host's memory handles.
#pragma once

#include "A.h"

typedef A_long AEGP_MemFlag;
enum {
    AEGP_MemFlag_NONE = 0,
    AEGP_MemFlag_CLEAR = 1 << 0,
    AEGP_MemFlag_QUIET = 1 << 1,
};

// 32 bits wide even in a 64-bit host.
typedef A_u_long AEGP_MemSize;
