// The plug-in's outward functions: the entry point and the two callbacks. No exception of any kind leaves them.
#pragma once

#include "AE_GeneralPlug.h"
#include "entry.h"

// Written once by the entry point, before any callback can run.
extern SPBasicSuite* sP;
extern AEGP_PluginID S_my_id;
extern AEGP_Command S_Exflate_cmd;  // 0 until the host has given an id

// Called once by the host: adds the item at the bottom of the Layer menu and registers the two callbacks. A failed
// registration is reported to the user, and its code is returned.
extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long major_versionL, A_long minor_versionL,
                                          AEGP_PluginID aegp_plugin_id, AEGP_GlobalRefcon* global_refconP);

// Enables and names the menu item when a pre-comp layer is selected in the active composition, else disables it. Leaves
// it alone when no composition is active.
A_Err UpdateMenuHook(AEGP_GlobalRefcon plugin_refconP, AEGP_UpdateMenuRefcon refconP, AEGP_WindowType active_window);

// Called for every menu command; runs the whole command when it is ours and nobody has handled it.
A_Err CommandHook(AEGP_GlobalRefcon plugin_refconP, AEGP_CommandRefcon refconP, AEGP_Command command,
                  AEGP_HookPriority hook_priority, A_Boolean already_handledB, A_Boolean* handledPB);
