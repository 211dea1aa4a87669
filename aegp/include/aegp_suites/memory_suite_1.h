// Memory handles. Each lock needs an unlock, each handle from the host must be freed.
#pragma once

#include "aegp_types/handles.h"
#include "aegp_types/memory.h"

typedef struct AEGP_MemorySuite1 {
    A_Err (*AEGP_NewMemHandle)(AEGP_PluginID plugin_id, const A_char* whatZ, AEGP_MemSize size, AEGP_MemFlag flags,
                               AEGP_MemHandle* memPH);
    A_Err (*AEGP_FreeMemHandle)(AEGP_MemHandle memH);
    A_Err (*AEGP_LockMemHandle)(AEGP_MemHandle memH, void** ptr_to_ptr);
    A_Err (*AEGP_UnlockMemHandle)(AEGP_MemHandle memH);
    A_Err (*AEGP_GetMemHandleSize)(AEGP_MemHandle memH, AEGP_MemSize* sizeP);
    A_Err (*AEGP_ResizeMemHandle)(const A_char* whatZ, AEGP_MemSize new_size, AEGP_MemHandle memH);
    A_Err (*AEGP_SetMemReportingOn)(A_Boolean turn_OnB);
    A_Err (*AEGP_GetMemStats)(AEGP_PluginID plugin_id, A_long* countPL, A_long* sizePL);
} AEGP_MemorySuite1;
