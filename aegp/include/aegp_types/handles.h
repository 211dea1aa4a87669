// Handles, identifiers and the plug-in's own reference constants.
#pragma once

#include "A.h"

// References to the host's objects, opaque and owned by the host. Deleting or reordering things makes them stale.
typedef struct _AEGP_Project** AEGP_ProjectH;
typedef struct _AEGP_Item** AEGP_ItemH;
typedef struct _AEGP_Comp** AEGP_CompH;
typedef struct _AEGP_Footage** AEGP_FootageH;
typedef struct _AEGP_Layer** AEGP_LayerH;
typedef struct _AEGP_Effect** AEGP_EffectRefH;
typedef struct _AEGP_Mask** AEGP_MaskRefH;
typedef struct _AEGPp_Stream** AEGP_StreamRefH;
typedef struct _AEGP_MaskOutline** AEGP_MaskOutlineValH;
typedef struct _AEGP_Collection2** AEGP_Collection2H;
typedef struct _AEGP_SoundData** AEGP_SoundDataH;
typedef struct _AEGP_AddKeyframesInfo** AEGP_AddKeyframesInfoH;
typedef struct _AEGP_TextDocument** AEGP_TextDocumentH;
typedef struct _AEGP_MarkerVal* AEGP_MarkerValP;
typedef struct _AEGP_ItemView* AEGP_ItemViewP;

// Given at registration, handed back in each hook; the host never looks behind them.
typedef struct _AEGP_GlobalRefcon* AEGP_GlobalRefcon;
typedef struct _AEGP_CommandRefcon* AEGP_CommandRefcon;
typedef struct _AEGP_UpdateMenuRefcon* AEGP_UpdateMenuRefcon;
typedef struct _AEGP_DeathRefcon* AEGP_DeathRefcon;
typedef struct _AEGP_VersionRefcon* AEGP_VersionRefcon;
typedef struct _AEGP_AboutStringRefcon* AEGP_AboutStringRefcon;
typedef struct _AEGP_AboutRefcon* AEGP_AboutRefcon;
typedef struct _AEGP_IdleRefcon* AEGP_IdleRefcon;
typedef struct _AEGP_IORefcon* AEGP_IORefcon;

typedef A_long AEGP_PluginID;

typedef A_long AEGP_LayerIDVal;
#define AEGP_LayerIDVal_NONE 0

typedef A_long AEGP_MaskIDVal;
#define AEGP_MaskIDVal_NONE 0
