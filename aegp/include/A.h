// The host's basic types: fixed-width numbers, error codes, times, colours, memory handles.
#pragma once

#include <stdint.h>

#include "AEConfig.h"

typedef char A_char;
typedef uint8_t A_u_char;
typedef int16_t A_short;
typedef uint16_t A_u_short;
typedef int32_t A_long;
typedef uint32_t A_u_long;
typedef double A_FpLong;
typedef uint8_t A_Boolean;
typedef void* A_Handle;
// Strings of these end with a zero unit.
typedef A_u_short A_UTF16Char;

// One byte, four on Windows: keep such values in their own type, never reach them through an int.
#ifdef AE_OS_WIN
typedef A_long A_LegacyEnumType;
#else
typedef A_char A_LegacyEnumType;
#endif

// Zero is success. The effect side adds its own block from 512 on (AE_Effect.h).
typedef A_long A_Err;
enum {
    A_Err_NONE = 0,
    A_Err_GENERIC,
    A_Err_STRUCT,
    A_Err_PARAMETER,
    A_Err_ALLOC,
    A_Err_WRONG_THREAD,
    A_Err_CONST_PROJECT_MODIFICATION,
    A_Err_RESERVED_7,
    A_Err_RESERVED_8,
    A_Err_RESERVED_9,
    A_Err_RESERVED_10,
    A_Err_RESERVED_11,
    A_Err_RESERVED_12,
    A_Err_MISSING_SUITE,
    A_Err_RESERVED_14,
    A_Err_RESERVED_15,
    A_Err_RESERVED_16,
    A_Err_RESERVED_17,
    A_Err_RESERVED_18,
    A_Err_RESERVED_19,
    A_Err_RESERVED_20,
    A_Err_RESERVED_21,
    A_Err_NOT_IN_CACHE_OR_COMPUTE_PENDING,
    A_Err_PROJECT_LOAD_FATAL,
    A_Err_EFFECT_APPLY_FATAL,
    A_Err_LAST,
};

// value / scale seconds; a scale of 0 is not a valid time.
typedef struct A_Time {
    A_long value;
    A_u_long scale;
} A_Time;

typedef struct A_Ratio {
    A_long num;
    A_u_long den;
} A_Ratio;

typedef struct A_FloatPoint {
    A_FpLong x;
    A_FpLong y;
} A_FloatPoint;

typedef struct A_FloatRect {
    A_FpLong left;
    A_FpLong top;
    A_FpLong right;
    A_FpLong bottom;
} A_FloatRect;

typedef struct A_Matrix4 {
    A_FpLong mat[4][4];
} A_Matrix4;

typedef struct A_Color {
    A_FpLong alpha;
    A_FpLong red;
    A_FpLong green;
    A_FpLong blue;
} A_Color;

typedef struct A_Version {
    A_short majorS;
    A_short minorS;
} A_Version;

// Memory owned by the host; reached through the memory suite only.
typedef struct _Up_OpaqueMem** AEGP_MemHandle;
