// Menu commands.
#pragma once

#include "aegp_types/command.h"

typedef struct AEGP_CommandSuite1 {
    A_Err (*AEGP_GetUniqueCommand)(AEGP_Command* unique_commandP);
    A_Err (*AEGP_InsertMenuCommand)(AEGP_Command command, const A_char* nameZ, AEGP_MenuID menu_id, A_long after_itemL);
    A_Err (*AEGP_RemoveMenuCommand)(AEGP_Command command);
    A_Err (*AEGP_SetMenuCommandName)(AEGP_Command command, const A_char* nameZ);
    A_Err (*AEGP_EnableCommand)(AEGP_Command command);
    A_Err (*AEGP_DisableCommand)(AEGP_Command command);
    A_Err (*AEGP_CheckMarkMenuCommand)(AEGP_Command command, A_Boolean checkB);
    A_Err (*AEGP_DoCommand)(AEGP_Command command);
} AEGP_CommandSuite1;
