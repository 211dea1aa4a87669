// Layers: flags, kinds, quality, transfer modes, and the two clocks.
#pragma once

#include "AE_Effect.h"

// Terminator included, like all sizes of this kind.
#define AEGP_MAX_LAYER_NAME_SIZE 32

#define AEGP_REORDER_LAYER_TO_END (-1)

typedef A_long AEGP_LayerFlags;
enum {
    AEGP_LayerFlag_NONE = 0,
    AEGP_LayerFlag_VIDEO_ACTIVE = 1 << 0,
    AEGP_LayerFlag_AUDIO_ACTIVE = 1 << 1,
    AEGP_LayerFlag_EFFECTS_ACTIVE = 1 << 2,
    AEGP_LayerFlag_MOTION_BLUR = 1 << 3,
    AEGP_LayerFlag_FRAME_BLENDING = 1 << 4,
    AEGP_LayerFlag_LOCKED = 1 << 5,
    AEGP_LayerFlag_SHY = 1 << 6,
    AEGP_LayerFlag_COLLAPSE = 1 << 7,
    AEGP_LayerFlag_AUTO_ORIENT_ROTATION = 1 << 8,
    AEGP_LayerFlag_ADJUSTMENT_LAYER = 1 << 9,
    AEGP_LayerFlag_TIME_REMAPPING = 1 << 10,
    AEGP_LayerFlag_LAYER_IS_3D = 1 << 11,
    AEGP_LayerFlag_LOOK_AT_CAMERA = 1 << 12,
    AEGP_LayerFlag_LOOK_AT_POI = 1 << 13,
    AEGP_LayerFlag_SOLO = 1 << 14,
    AEGP_LayerFlag_MARKERS_LOCKED = 1 << 15,
    AEGP_LayerFlag_NULL_LAYER = 1 << 16,
    AEGP_LayerFlag_HIDE_LOCKED_MASKS = 1 << 17,
    AEGP_LayerFlag_GUIDE_LAYER = 1 << 18,
    AEGP_LayerFlag_ADVANCED_FRAME_BLENDING = 1 << 19,
    AEGP_LayerFlag_SUBLAYERS_RENDER_SEPARATELY = 1 << 20,
    AEGP_LayerFlag_ENVIRONMENT_LAYER = 1 << 21,
};

typedef A_long AEGP_ObjectType;
enum {
    AEGP_ObjectType_NONE = -1,
    AEGP_ObjectType_AV,
    AEGP_ObjectType_LIGHT,
    AEGP_ObjectType_CAMERA,
    AEGP_ObjectType_TEXT,
    AEGP_ObjectType_VECTOR,
    AEGP_ObjectType_3D_MODEL,
    AEGP_ObjectType_RESERVED1,
    AEGP_ObjectType_RESERVED2,
    AEGP_ObjectType_RESERVED3,
    AEGP_ObjectType_NUM_TYPES,
};

typedef A_short AEGP_LayerQuality;
enum {
    AEGP_LayerQual_NONE = -1,
    AEGP_LayerQual_WIREFRAME,
    AEGP_LayerQual_DRAFT,
    AEGP_LayerQual_BEST,
};

typedef A_short AEGP_LTimeMode;
enum {
    AEGP_LTimeMode_LayerTime = 0,
    AEGP_LTimeMode_CompTime,
};

typedef A_long AEGP_TransferFlags;
enum {
    AEGP_TransferFlag_PRESERVE_ALPHA = 1 << 0,
    AEGP_TransferFlag_RANDOMIZE_DISSOLVE = 1 << 1,
};

typedef A_long AEGP_TrackMatte;
enum {
    AEGP_TrackMatte_NO_TRACK_MATTE = 0,
    AEGP_TrackMatte_ALPHA,
    AEGP_TrackMatte_NOT_ALPHA,
    AEGP_TrackMatte_LUMA,
    AEGP_TrackMatte_NOT_LUMA,
};

typedef struct AEGP_LayerTransferMode {
    PF_TransferMode mode;
    AEGP_TransferFlags flags;
    AEGP_TrackMatte track_matte;
} AEGP_LayerTransferMode;
