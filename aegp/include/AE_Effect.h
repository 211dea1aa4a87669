// The effect side of the host's interface, as far as general plug-ins name it.
#pragma once

#include "A.h"

#define PF_AE_PLUG_IN_VERSION 13
#define PF_AE_PLUG_IN_SUBVERS 29

#define PF_FIRST_ERR 512

typedef A_long PF_Err;
enum {
    PF_Err_NONE = 0,
    PF_Err_OUT_OF_MEMORY = 4,
    PF_Err_INTERNAL_STRUCT_DAMAGED = PF_FIRST_ERR,
    PF_Err_INVALID_INDEX,
    PF_Err_UNRECOGNIZED_PARAM_TYPE,
    PF_Err_INVALID_CALLBACK,
    PF_Err_BAD_CALLBACK_PARAM,
    PF_Interrupt_CANCEL,
    PF_Err_CANNOT_PARSE_KEYFRAME_TEXT,
};

typedef A_long PF_ParamType;
enum {
    PF_Param_RESERVED = -1,
    PF_Param_LAYER,
    PF_Param_SLIDER,
    PF_Param_FIX_SLIDER,
    PF_Param_ANGLE,
    PF_Param_CHECKBOX,
    PF_Param_COLOR,
    PF_Param_POINT,
    PF_Param_POPUP,
    PF_Param_CUSTOM,
    PF_Param_NO_DATA,
    PF_Param_FLOAT_SLIDER,
    PF_Param_ARBITRARY_DATA,
    PF_Param_PATH,
    PF_Param_GROUP_START,
    PF_Param_GROUP_END,
    PF_Param_BUTTON,
    PF_Param_RESERVED2,
    PF_Param_RESERVED3,
    PF_Param_POINT_3D,
};

typedef A_long PF_ParamIndex;
typedef union PF_ParamDefUnion PF_ParamDefUnion;

typedef A_long PF_Cmd;
enum {
    PF_Cmd_ABOUT = 0,
    PF_Cmd_GLOBAL_SETUP,
    PF_Cmd_UNUSED_0,
    PF_Cmd_GLOBAL_SETDOWN,
    PF_Cmd_PARAMS_SETUP,
    PF_Cmd_SEQUENCE_SETUP,
    PF_Cmd_SEQUENCE_RESETUP,
    PF_Cmd_SEQUENCE_FLATTEN,
    PF_Cmd_SEQUENCE_SETDOWN,
    PF_Cmd_DO_DIALOG,
    PF_Cmd_FRAME_SETUP,
    PF_Cmd_RENDER,
    PF_Cmd_FRAME_SETDOWN,
    PF_Cmd_USER_CHANGED_PARAM,
    PF_Cmd_UPDATE_PARAMS_UI,
    PF_Cmd_EVENT,
    PF_Cmd_GET_EXTERNAL_DEPENDENCIES,
    PF_Cmd_COMPLETELY_GENERAL,
    PF_Cmd_QUERY_DYNAMIC_FLAGS,
    PF_Cmd_AUDIO_RENDER,
    PF_Cmd_AUDIO_SETUP,
    PF_Cmd_AUDIO_SETDOWN,
    PF_Cmd_ARBITRARY_CALLBACK,
    PF_Cmd_SMART_PRE_RENDER,
    PF_Cmd_SMART_RENDER,
    PF_Cmd_RESERVED1,
    PF_Cmd_RESERVED2,
    PF_Cmd_RESERVED3,
    PF_Cmd_GET_FLATTENED_SEQUENCE_DATA,
    PF_Cmd_TRANSLATE_PARAMS_TO_PREFS,
    PF_Cmd_RESERVED4,
    PF_Cmd_SMART_RENDER_GPU,
    PF_Cmd_GPU_DEVICE_SETUP,
    PF_Cmd_GPU_DEVICE_SETDOWN,
    PF_Cmd_NUM_CMDS,
};

typedef A_long PF_TransferMode;
enum {
    PF_Xfer_NONE = -1,
    PF_Xfer_COPY,
    PF_Xfer_BEHIND,
    PF_Xfer_IN_FRONT,
    PF_Xfer_DISSOLVE,
    PF_Xfer_ADD,
    PF_Xfer_MULTIPLY,
    PF_Xfer_SCREEN,
    PF_Xfer_OVERLAY,
    PF_Xfer_SOFT_LIGHT,
    PF_Xfer_HARD_LIGHT,
    PF_Xfer_DARKEN,
    PF_Xfer_LIGHTEN,
    PF_Xfer_DIFFERENCE,
    PF_Xfer_HUE,
    PF_Xfer_SATURATION,
    PF_Xfer_COLOR,
    PF_Xfer_LUMINOSITY,
    PF_Xfer_MULTIPLY_ALPHA,
    PF_Xfer_MULTIPLY_ALPHA_LUMA,
    PF_Xfer_MULTIPLY_NOT_ALPHA,
    PF_Xfer_MULTIPLY_NOT_ALPHA_LUMA,
    PF_Xfer_ADDITIVE_PREMUL,
    PF_Xfer_ALPHA_ADD,
    PF_Xfer_COLOR_DODGE,
    PF_Xfer_COLOR_BURN,
    PF_Xfer_EXCLUSION,
    PF_Xfer_DIFFERENCE2,
    PF_Xfer_COLOR_DODGE2,
    PF_Xfer_COLOR_BURN2,
    PF_Xfer_LINEAR_DODGE,
    PF_Xfer_LINEAR_BURN,
    PF_Xfer_LINEAR_LIGHT,
    PF_Xfer_VIVID_LIGHT,
    PF_Xfer_PIN_LIGHT,
    PF_Xfer_HARD_MIX,
    PF_Xfer_LIGHTER_COLOR,
    PF_Xfer_DARKER_COLOR,
    PF_Xfer_SUBTRACT,
    PF_Xfer_DIVIDE,
    PF_Xfer_RESERVED0,
    PF_Xfer_RESERVED1,
    PF_Xfer_NUM_MODES,
};
