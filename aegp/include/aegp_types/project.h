// Projects: bit depth, platform, and how times are displayed.
#pragma once

#include "A.h"

#define AEGP_MAX_PROJ_NAME_SIZE 48
#define AEGP_MAX_PATH_SIZE 260

typedef A_long AEGP_Platform;
enum {
    AEGP_Platform_MAC = 0,
    AEGP_Platform_WIN,
};

typedef A_char AEGP_ProjBitDepth;
enum {
    AEGP_ProjBitDepth_8 = 0,
    AEGP_ProjBitDepth_16,
    AEGP_ProjBitDepth_32,
    AEGP_ProjBitDepth_NUM_VALID_DEPTHS,
};

typedef A_char AEGP_TimeDisplayType;
enum {
    AEGP_TimeDisplayType_TIMECODE = 0,
    AEGP_TimeDisplayType_FRAMES,
    AEGP_TimeDisplayType_FEET_AND_FRAMES,
};

// Project suite 5.
typedef struct AEGP_TimeDisplay2 {
    AEGP_TimeDisplayType time_display_type;
    A_char timebaseC;
    A_Boolean non_drop_30B;
    A_char frames_per_footC;
    A_long starting_frameL;
    A_Boolean auto_timecode_baseB;
} AEGP_TimeDisplay2;

typedef char AEGP_TimeDisplayMode;
enum {
    AEGP_TimeDisplay_TIMECODE = 0,
    AEGP_TimeDisplay_FRAMES,
};

typedef char AEGP_SourceTimecodeDisplayMode;
enum {
    AEGP_SourceTimecode_ZERO = 0,
    AEGP_SourceTimecode_SOURCE_TIMECODE,
};

typedef char AEGP_FramesDisplayMode;
enum {
    AEGP_Frames_ZERO_BASED = 0,
    AEGP_Frames_ONE_BASED,
    AEGP_Frames_TIMECODE_CONVERSION,
};

// Project suite 6.
typedef struct AEGP_TimeDisplay3 {
    AEGP_TimeDisplayMode display_mode;
    AEGP_SourceTimecodeDisplayMode footage_display_mode;
    A_Boolean display_dropframeB;
    A_Boolean use_feet_framesB;
    A_char timebaseC;
    A_char frames_per_footC;
    AEGP_FramesDisplayMode frames_display_mode;
} AEGP_TimeDisplay3;
