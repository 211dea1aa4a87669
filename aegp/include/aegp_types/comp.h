// Compositions.
#pragma once

#include "A.h"

typedef struct AEGP_DownsampleFactor {
    A_short xS;
    A_short yS;
} AEGP_DownsampleFactor;

typedef A_long AEGP_CompFlags;
enum {
    AEGP_CompFlag_SHOW_ALL_SHY = 1 << 0,
    AEGP_CompFlag_RESERVED_1 = 1 << 1,
    AEGP_CompFlag_RESERVED_2 = 1 << 2,
    AEGP_CompFlag_ENABLE_MOTION_BLUR = 1 << 3,
    AEGP_CompFlag_ENABLE_TIME_FILTER = 1 << 4,
    AEGP_CompFlag_GRID_TO_FRAMES = 1 << 5,
    AEGP_CompFlag_GRID_TO_FIELDS = 1 << 6,
    AEGP_CompFlag_USE_LOCAL_DSF = 1 << 7,
    AEGP_CompFlag_DRAFT_3D = 1 << 8,
    AEGP_CompFlag_SHOW_GRAPH = 1 << 9,
    AEGP_CompFlag_RESERVED_3 = 1 << 10,
};
