// Footage: how it is read and interpreted.
#pragma once

#include "A.h"
#include "AE_IO.h"
#include "FIEL_Public.h"

#define AEGP_FOOTAGE_LAYER_NAME_LEN 63

typedef A_long AEGP_FootageSignature;
enum {
    AEGP_FootageSignature_NONE = -1,
    AEGP_FootageSignature_MISSING,
    AEGP_FootageSignature_SOLID = 0x536F6C69,
};

typedef FIEL_Label AEGP_InterlaceLabel;

typedef A_u_long AEGP_AlphaFlags;
enum {
    AEGP_AlphaPremul = 1 << 0,
    AEGP_AlphaInverted = 1 << 1,
    AEGP_AlphaIgnore = 1 << 2,
};

typedef struct AEGP_AlphaLabel {
    AEGP_AlphaFlags flags;
    A_u_char redCu;
    A_u_char greenCu;
    A_u_char blueCu;
} AEGP_AlphaLabel;

typedef A_long AEGP_PulldownPhase;
enum {
    AEGP_PulldownPhase_NO_PULLDOWN = 0,
    AEGP_PulldownPhase_WSSWW,
    AEGP_PulldownPhase_SSWWW,
    AEGP_PulldownPhase_SWWWS,
    AEGP_PulldownPhase_WWWSS,
    AEGP_PulldownPhase_WWSSW,
    AEGP_PulldownPhase_WWWSW,
    AEGP_PulldownPhase_WWSWW,
    AEGP_PulldownPhase_WSWWW,
    AEGP_PulldownPhase_SWWWW,
    AEGP_PulldownPhase_WWWWS,
};

typedef struct AEGP_LoopBehavior {
    A_long loops;
    A_long reserved;
} AEGP_LoopBehavior;

// Obtained from the host, changed and given back; never made from scratch.
typedef struct AEGP_FootageInterp {
    AEGP_InterlaceLabel il;
    AEGP_AlphaLabel al;
    AEGP_PulldownPhase pd;
    AEGP_LoopBehavior loop;
    A_Ratio pix_aspect_ratio;
    A_FpLong native_fpsF;
    A_FpLong conform_fpsF;
    A_long depthL;
    A_Boolean motion_dB;
} AEGP_FootageInterp;

typedef A_long AEGP_LayerDrawStyle;
enum {
    AEGP_LayerDrawStyle_LAYER_BOUNDS = 0,
    AEGP_LayerDrawStyle_DOCUMENT_BOUNDS,
};

typedef struct AEGP_FootageLayerKey {
    A_long layer_idL;
    A_long layer_indexL;
    A_char nameAC[AEGP_FOOTAGE_LAYER_NAME_LEN + 1];
    AEGP_LayerDrawStyle layer_draw_style;
} AEGP_FootageLayerKey;

typedef struct AEGP_FileSequenceImportOptions {
    A_Boolean all_in_folderB;
    A_Boolean force_alphabeticalB;
    A_long start_frameL;
    A_long end_frameL;
} AEGP_FileSequenceImportOptions;

typedef A_u_char AEGP_InterpretationStyle;
enum {
    AEGP_InterpretationStyle_NO_DIALOG_GUESS = 0,
    AEGP_InterpretationStyle_DIALOG_OK,
    AEGP_InterpretationStyle_NO_DIALOG_NO_GUESS,
};
