// The plug-in as the host sees it: its entry point and the folders it may live in.
#pragma once

#include "SPBasic.h"
#include "aegp_types/handles.h"

#define AEGP_INITFUNC_MAJOR_VERSION 1
#define AEGP_INITFUNC_MINOR_VERSION 9
#define AEGP_MAX_PLUGIN_NAME_SIZE 32

// The type of the exported entry point.
typedef A_Err AEGP_PluginInitFuncPrototype(SPBasicSuite* pica_basicP, A_long driver_major_versionL,
                                           A_long driver_minor_versionL, AEGP_PluginID aegp_plugin_id,
                                           AEGP_GlobalRefcon* plugin_refconP);
typedef AEGP_PluginInitFuncPrototype* AEGP_PluginInitFunc;

typedef A_u_long AEGP_GetPathTypes;
enum {
    AEGP_GetPathTypes_PLUGIN = 0,
    AEGP_GetPathTypes_USER_PLUGIN,
    AEGP_GetPathTypes_ALLUSER_PLUGIN,
    AEGP_GetPathTypes_APP,
};

typedef struct AEGP_ErrReportState {
    A_long reservedAL[12];
} AEGP_ErrReportState;
