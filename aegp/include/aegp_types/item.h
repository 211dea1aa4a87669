// Items of the project: folders, compositions, footage.
#pragma once

#include "A.h"

#define AEGP_MAX_ITEM_NAME_SIZE 32
#define AEGP_MAX_TYPE_NAME_SIZE 32

typedef A_short AEGP_ItemType;
enum {
    AEGP_ItemType_NONE = 0,
    AEGP_ItemType_FOLDER,
    AEGP_ItemType_COMP,
    AEGP_ItemType_SOLID_defunct,
    AEGP_ItemType_FOOTAGE,
    AEGP_ItemType_NUM_TYPES1,
};

typedef A_long AEGP_ItemFlags;
enum {
    AEGP_ItemFlag_MISSING = 1 << 0,
    AEGP_ItemFlag_HAS_PROXY = 1 << 1,
    AEGP_ItemFlag_USING_PROXY = 1 << 2,
    AEGP_ItemFlag_MISSING_PROXY = 1 << 3,
    AEGP_ItemFlag_HAS_VIDEO = 1 << 4,
    AEGP_ItemFlag_HAS_AUDIO = 1 << 5,
    AEGP_ItemFlag_STILL = 1 << 6,
    AEGP_ItemFlag_HAS_ACTIVE_AUDIO = 1 << 7,
};

typedef A_char AEGP_LabelID;
enum {
    AEGP_Label_NONE = -1,
    AEGP_Label_NO_LABEL,
    AEGP_Label_1,
    AEGP_Label_2,
    AEGP_Label_3,
    AEGP_Label_4,
    AEGP_Label_5,
    AEGP_Label_6,
    AEGP_Label_7,
    AEGP_Label_8,
    AEGP_Label_9,
    AEGP_Label_10,
    AEGP_Label_11,
    AEGP_Label_12,
    AEGP_Label_13,
    AEGP_Label_14,
    AEGP_Label_15,
    AEGP_Label_16,
    AEGP_Label_NUMTYPES,
};
