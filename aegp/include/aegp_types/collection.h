// Collections: what a selection holds.
#pragma once

#include "aegp_types/effect.h"
#include "aegp_types/keyframe.h"
#include "aegp_types/stream.h"

typedef A_long AEGP_MaskIndex;
typedef A_long AEGP_VertexIndex;

typedef A_LegacyEnumType AEGP_CollectionItemType;
enum {
    AEGP_CollectionItemType_NONE = 0,
    AEGP_CollectionItemType_LAYER,
    AEGP_CollectionItemType_MASK,
    AEGP_CollectionItemType_EFFECT,
    AEGP_CollectionItemType_STREAM,
    AEGP_CollectionItemType_KEYFRAME,
    AEGP_CollectionItemType_MASK_VERTEX,
    AEGP_CollectionItemType_STREAMREF,
    AEGP_CollectionItemType_END,
    AEGP_CollectionItemType_BEGIN = AEGP_CollectionItemType_LAYER,
};

typedef struct AEGP_LayerCollectionItem {
    AEGP_LayerH layerH;
} AEGP_LayerCollectionItem;

typedef struct AEGP_MaskCollectionItem {
    AEGP_LayerH layerH;
    AEGP_MaskIndex index;
} AEGP_MaskCollectionItem;

typedef struct AEGP_EffectCollectionItem {
    AEGP_LayerH layerH;
    AEGP_EffectIndex index;
} AEGP_EffectCollectionItem;

typedef A_LegacyEnumType AEGP_StreamCollectionItemType;
enum {
    AEGP_StreamCollectionItemType_NONE = 0,
    AEGP_StreamCollectionItemType_LAYER,
    AEGP_StreamCollectionItemType_MASK,
    AEGP_StreamCollectionItemType_EFFECT,
    AEGP_StreamCollectionItemType_END,
    AEGP_StreamCollectionItemType_BEGIN = AEGP_StreamCollectionItemType_LAYER,
};

typedef struct AEGP_LayerStreamCollectionItem {
    AEGP_LayerH layerH;
    AEGP_LayerStream layer_stream;
} AEGP_LayerStreamCollectionItem;

typedef struct AEGP_MaskStreamCollectionItem {
    AEGP_MaskCollectionItem mask;
    AEGP_MaskStream mask_stream;
} AEGP_MaskStreamCollectionItem;

typedef struct AEGP_EffectStreamCollectionItem {
    AEGP_EffectCollectionItem effect;
    A_long param_index;
} AEGP_EffectStreamCollectionItem;

typedef struct AEGP_StreamCollectionItem {
    AEGP_StreamCollectionItemType type;
    union {
        AEGP_LayerStreamCollectionItem layer_stream;
        AEGP_MaskStreamCollectionItem mask_stream;
        AEGP_EffectStreamCollectionItem effect_stream;
    } u;
} AEGP_StreamCollectionItem;

typedef struct AEGP_MaskVertexCollectionItem {
    AEGP_MaskCollectionItem mask_sel;
    AEGP_VertexIndex index;
} AEGP_MaskVertexCollectionItem;

typedef struct AEGP_KeyframeCollectionItem {
    AEGP_StreamCollectionItem stream_coll;
    AEGP_KeyframeIndex index;
} AEGP_KeyframeCollectionItem;

// type says which member of u is valid; its width is that of A_LegacyEnumType.
typedef struct AEGP_CollectionItemV2 {
    AEGP_CollectionItemType type;
    union {
        AEGP_LayerCollectionItem layer;
        AEGP_MaskCollectionItem mask;
        AEGP_EffectCollectionItem effect;
        AEGP_StreamCollectionItem stream;
        AEGP_MaskVertexCollectionItem mask_vertex;
        AEGP_KeyframeCollectionItem keyframe;
    } u;
    AEGP_StreamRefH stream_refH;
} AEGP_CollectionItemV2;
