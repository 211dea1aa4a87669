// The functions a plug-in registers with the host. They are C functions: no exception may leave them.
#pragma once

#include "aegp_types/command.h"
#include "aegp_types/handles.h"

#define AEGP_MAX_ABOUT_STRING_SIZE 256

typedef A_u_long AEGP_HookPriority;
enum {
    AEGP_HP_BeforeAE = 1,
    AEGP_HP_AfterAE,
};

typedef A_Err (*AEGP_CommandHook)(AEGP_GlobalRefcon plugin_refconP, AEGP_CommandRefcon refconP, AEGP_Command command,
                                  AEGP_HookPriority hook_priority, A_Boolean already_handledB, A_Boolean* handledPB);
typedef A_Err (*AEGP_UpdateMenuHook)(AEGP_GlobalRefcon plugin_refconP, AEGP_UpdateMenuRefcon refconP,
                                     AEGP_WindowType active_window);
typedef A_Err (*AEGP_DeathHook)(AEGP_GlobalRefcon plugin_refconP, AEGP_DeathRefcon refconP);
typedef A_Err (*AEGP_VersionHook)(AEGP_GlobalRefcon plugin_refconP, AEGP_VersionRefcon refconP,
                                  A_u_long* pf_versionPLu);
typedef A_Err (*AEGP_AboutStringHook)(AEGP_GlobalRefcon plugin_refconP, AEGP_AboutStringRefcon refconP, A_char* aboutZ);
typedef A_Err (*AEGP_AboutHook)(AEGP_GlobalRefcon plugin_refconP, AEGP_AboutRefcon refconP);
typedef A_Err (*AEGP_IdleHook)(AEGP_GlobalRefcon plugin_refconP, AEGP_IdleRefcon refconP, A_long* max_sleepPL);
