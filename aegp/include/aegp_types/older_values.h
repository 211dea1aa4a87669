// Older forms of values and collection items. No suite declared here takes them.
#pragma once

#include "aegp_types/collection.h"

#define AEGP_MAX_MARKER_NAME_SIZE 64
#define AEGP_MAX_MARKER_URL_SIZE 1024
#define AEGP_MAX_MARKER_TARGET_SIZE 128
#define AEGP_MAX_MARKER_CHAPTER_SIZE 128

typedef struct AEGP_MarkerVal {
    A_char nameAC[AEGP_MAX_MARKER_NAME_SIZE];
    A_char urlAC[AEGP_MAX_MARKER_URL_SIZE];
    A_char targetAC[AEGP_MAX_MARKER_TARGET_SIZE];
    A_char chapterAC[AEGP_MAX_MARKER_CHAPTER_SIZE];
} AEGP_MarkerVal;

typedef AEGP_MarkerVal** AEGP_MarkerValH;

typedef union AEGP_StreamVal {
    AEGP_FourDVal four_d;
    AEGP_ThreeDVal three_d;
    AEGP_TwoDVal two_d;
    AEGP_OneDVal one_d;
    AEGP_ColorVal color;
    AEGP_ArbBlockVal arbH;
    AEGP_MarkerValH markerH;
    AEGP_LayerIDVal layer_id;
    AEGP_MaskIDVal mask_id;
    AEGP_MaskOutlineValH mask;
    AEGP_TextDocumentH text_documentH;
} AEGP_StreamVal;

typedef struct AEGP_StreamValue {
    AEGP_StreamRefH streamH;
    AEGP_StreamVal val;
} AEGP_StreamValue;

typedef struct AEGP_CollectionItem {
    AEGP_CollectionItemType type;
    union {
        AEGP_LayerCollectionItem layer;
        AEGP_MaskCollectionItem mask;
        AEGP_EffectCollectionItem effect;
        AEGP_StreamCollectionItem stream;
        AEGP_MaskVertexCollectionItem mask_vertex;
        AEGP_KeyframeCollectionItem keyframe;
    } u;
} AEGP_CollectionItem;
