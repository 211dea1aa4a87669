// Streams: which ones a layer and a mask have, and their values.
#pragma once

#include "aegp_types/color.h"
#include "aegp_types/handles.h"

#define AEGP_MAX_STREAM_NAME_SIZE 32
#define AEGP_MAX_STREAM_UNITS_SIZE 32

// NUMTYPES and END grow with the host's editions: never loop up to them.
typedef A_long AEGP_LayerStream;
enum {
    AEGP_LayerStream_NONE = -1,
    AEGP_LayerStream_ANCHORPOINT,
    AEGP_LayerStream_POSITION,
    AEGP_LayerStream_SCALE,
    AEGP_LayerStream_ROTATION,
    AEGP_LayerStream_ROTATE_Z = AEGP_LayerStream_ROTATION,
    AEGP_LayerStream_OPACITY,
    AEGP_LayerStream_AUDIO,
    AEGP_LayerStream_MARKER,
    AEGP_LayerStream_TIME_REMAP,
    AEGP_LayerStream_ROTATE_X,
    AEGP_LayerStream_ROTATE_Y,
    AEGP_LayerStream_ORIENTATION,
    AEGP_LayerStream_ZOOM,
    AEGP_LayerStream_DEPTH_OF_FIELD,
    AEGP_LayerStream_FOCUS_DISTANCE,
    AEGP_LayerStream_APERTURE,
    AEGP_LayerStream_BLUR_LEVEL,
    AEGP_LayerStream_INTENSITY,
    AEGP_LayerStream_COLOR,
    AEGP_LayerStream_CONE_ANGLE,
    AEGP_LayerStream_CONE_FEATHER,
    AEGP_LayerStream_SHADOW_DARKNESS,
    AEGP_LayerStream_SHADOW_DIFFUSION,
    AEGP_LayerStream_ACCEPTS_SHADOWS,
    AEGP_LayerStream_ACCEPTS_LIGHTS,
    AEGP_LayerStream_AMBIENT_COEFF,
    AEGP_LayerStream_DIFFUSE_COEFF,
    AEGP_LayerStream_SPECULAR_INTENSITY,
    AEGP_LayerStream_SPECULAR_SHININESS,
    AEGP_LayerStream_CASTS_SHADOWS,
    AEGP_LayerStream_LIGHT_TRANSMISSION,
    AEGP_LayerStream_METAL,
    AEGP_LayerStream_SOURCE_TEXT,
    AEGP_LayerStream_IRIS_SHAPE,
    AEGP_LayerStream_IRIS_ROTATION,
    AEGP_LayerStream_IRIS_ROUNDNESS,
    AEGP_LayerStream_IRIS_ASPECT_RATIO,
    AEGP_LayerStream_IRIS_DIFFRACTION_FRINGE,
    AEGP_LayerStream_IRIS_HIGHLIGHT_GAIN,
    AEGP_LayerStream_IRIS_HIGHLIGHT_THRESHOLD,
    AEGP_LayerStream_IRIS_HIGHLIGHT_SATURATION,
    AEGP_LayerStream_LIGHT_FALLOFF_TYPE,
    AEGP_LayerStream_LIGHT_FALLOFF_START,
    AEGP_LayerStream_LIGHT_FALLOFF_DISTANCE,
    AEGP_LayerStream_REFLECTION_INTENSITY,
    AEGP_LayerStream_REFLECTION_SHARPNESS,
    AEGP_LayerStream_REFLECTION_ROLLOFF,
    AEGP_LayerStream_TRANSPARENCY_COEFF,
    AEGP_LayerStream_TRANSPARENCY_ROLLOFF,
    AEGP_LayerStream_INDEX_OF_REFRACTION,
    AEGP_LayerStream_EXTRUSION_BEVEL_STYLE,
    AEGP_LayerStream_EXTRUSION_BEVEL_DIRECTION,
    AEGP_LayerStream_EXTRUSION_BEVEL_DEPTH,
    AEGP_LayerStream_EXTRUSION_HOLE_BEVEL_DEPTH,
    AEGP_LayerStream_EXTRUSION_DEPTH,
    AEGP_LayerStream_PLANE_CURVATURE,
    AEGP_LayerStream_PLANE_SUBDIVISION,
    AEGP_LayerStream_LIGHT_BACKGROUND_VISIBLE,
    AEGP_LayerStream_LIGHT_BACKGROUND_OPACITY,
    AEGP_LayerStream_LIGHT_BACKGROUND_BLUR,
    AEGP_LayerStream_SHADOW_COLOR,
    AEGP_LayerStream_NUMTYPES,
    AEGP_LayerStream_BEGIN = AEGP_LayerStream_ANCHORPOINT,
    AEGP_LayerStream_END = AEGP_LayerStream_NUMTYPES,
};

typedef A_long AEGP_MaskStream;
enum {
    AEGP_MaskStream_OUTLINE = 400,
    AEGP_MaskStream_OPACITY,
    AEGP_MaskStream_FEATHER,
    AEGP_MaskStream_EXPANSION,
    AEGP_MaskStream_BEGIN = AEGP_MaskStream_OUTLINE,
    AEGP_MaskStream_END = 404,
};

typedef A_long AEGP_StreamFlags;
enum {
    AEGP_StreamFlag_NONE = 0,
    AEGP_StreamFlag_HAS_MIN = 1 << 0,
    AEGP_StreamFlag_HAS_MAX = 1 << 1,
    AEGP_StreamFlag_IS_SPATIAL = 1 << 2,
};

typedef A_long AEGP_StreamType;
enum {
    AEGP_StreamType_NO_DATA = 0,
    AEGP_StreamType_ThreeD_SPATIAL,
    AEGP_StreamType_ThreeD,
    AEGP_StreamType_TwoD_SPATIAL,
    AEGP_StreamType_TwoD,
    AEGP_StreamType_OneD,
    AEGP_StreamType_COLOR,
    AEGP_StreamType_ARB,
    AEGP_StreamType_MARKER,
    AEGP_StreamType_LAYER_ID,
    AEGP_StreamType_MASK_ID,
    AEGP_StreamType_MASK,
    AEGP_StreamType_TEXT_DOCUMENT,
};

typedef A_FpLong AEGP_OneDVal;

typedef struct AEGP_TwoDVal {
    A_FpLong x;
    A_FpLong y;
} AEGP_TwoDVal;

typedef struct AEGP_ThreeDVal {
    A_FpLong x;
    A_FpLong y;
    A_FpLong z;
} AEGP_ThreeDVal;

typedef A_FpLong AEGP_FourDVal[4];
typedef A_Handle AEGP_ArbBlockVal;

// Which member is valid depends on the stream's AEGP_StreamType.
typedef union AEGP_StreamVal2 {
    AEGP_FourDVal four_d;
    AEGP_ThreeDVal three_d;
    AEGP_TwoDVal two_d;
    AEGP_OneDVal one_d;
    AEGP_ColorVal color;
    AEGP_ArbBlockVal arbH;
    AEGP_MarkerValP markerP;
    AEGP_LayerIDVal layer_id;
    AEGP_MaskIDVal mask_id;
    AEGP_MaskOutlineValH mask;
    AEGP_TextDocumentH text_documentH;
} AEGP_StreamVal2;

typedef struct AEGP_StreamValue2 {
    AEGP_StreamRefH streamH;
    AEGP_StreamVal2 val;
} AEGP_StreamValue2;
