// Keyframes: interpolation, easing, flags.
#pragma once

#include "A.h"

typedef A_long AEGP_KeyframeIndex;

// The number of keyframes of a stream that carries no data.
enum { AEGP_NumKF_NO_DATA = -1 };

typedef A_long AEGP_KeyframeInterpolationType;
enum {
    AEGP_KeyInterp_NONE = 0,
    AEGP_KeyInterp_LINEAR,
    AEGP_KeyInterp_BEZIER,
    AEGP_KeyInterp_HOLD,
    AEGP_Interp_NUM_VALUES,
};

typedef A_long AEGP_KeyInterpolationMask;
enum {
    AEGP_KeyInterpMask_NONE = 0,
    AEGP_KeyInterpMask_LINEAR = 1 << 0,
    AEGP_KeyInterpMask_BEZIER = 1 << 1,
    AEGP_KeyInterpMask_HOLD = 1 << 2,
    AEGP_KeyInterpMask_CUSTOM = 1 << 3,
    AEGP_KeyInterpMask_ANY = 0xFFFF,
};

typedef struct AEGP_KeyframeEase {
    A_FpLong speedF;
    A_FpLong influenceF;
} AEGP_KeyframeEase;

// The host sets and clears one flag at a time.
typedef A_long AEGP_KeyframeFlags;
enum {
    AEGP_KeyframeFlag_NONE = 0,
    AEGP_KeyframeFlag_TEMPORAL_CONTINUOUS = 1 << 0,
    AEGP_KeyframeFlag_TEMPORAL_AUTOBEZIER = 1 << 1,
    AEGP_KeyframeFlag_SPATIAL_CONTINUOUS = 1 << 2,
    AEGP_KeyframeFlag_SPATIAL_AUTOBEZIER = 1 << 3,
    AEGP_KeyframeFlag_ROVING = 1 << 4,
};
