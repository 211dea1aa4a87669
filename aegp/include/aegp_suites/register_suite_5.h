// Registration of hooks; legal only while the entry point runs.
#pragma once

#include "AE_IO.h"
#include "PR_Public.h"
#include "PT_Public.h"
#include "aegp_types/command.h"
#include "aegp_types/handles.h"
#include "aegp_types/hook.h"

typedef struct AEGP_RegisterSuite5 {
    A_Err (*AEGP_RegisterCommandHook)(AEGP_PluginID aegp_plugin_id, AEGP_HookPriority hook_priority,
                                      AEGP_Command command, AEGP_CommandHook command_hook_func,
                                      AEGP_CommandRefcon refconP);
    A_Err (*AEGP_RegisterUpdateMenuHook)(AEGP_PluginID plugin_id, AEGP_UpdateMenuHook update_menu_hook_func,
                                         AEGP_UpdateMenuRefcon refconP);
    A_Err (*AEGP_RegisterDeathHook)(AEGP_PluginID aegp_plugin_id, AEGP_DeathHook death_hook_func,
                                    AEGP_DeathRefcon refconP);
    A_Err (*AEGP_RegisterVersionHook)(AEGP_PluginID aegp_plugin_id, AEGP_VersionHook version_hook_func,
                                      AEGP_VersionRefcon refconP);
    A_Err (*AEGP_RegisterAboutStringHook)(AEGP_PluginID aegp_plugin_id, AEGP_AboutStringHook about_string_hook_func,
                                          AEGP_AboutStringRefcon refconP);
    A_Err (*AEGP_RegisterAboutHook)(AEGP_PluginID aegp_plugin_id, AEGP_AboutHook about_hook_func,
                                    AEGP_AboutRefcon refconP);
    A_Err (*AEGP_RegisterArtisan)(A_Version api_version, A_Version artisan_version, AEGP_PluginID aegp_plugin_id,
                                  void* aegp_refconPV, const A_char* utf8_match_nameZ, const A_char* artisan_nameZ,
                                  PR_ArtisanEntryPoints* entry_funcs);
    A_Err (*AEGP_RegisterIO)(AEGP_PluginID aegp_plugin_id, AEGP_IORefcon aegp_refconP, const AEIO_ModuleInfo* io_infoP,
                             const AEIO_FunctionBlock4* aeio_fcn_blockP);
    A_Err (*AEGP_RegisterIdleHook)(AEGP_PluginID aegp_plugin_id, AEGP_IdleHook idle_hook_func, AEGP_IdleRefcon refconP);
    A_Err (*AEGP_RegisterTracker)(A_Version api_version, A_Version tracker_version, AEGP_PluginID aegp_plugin_id,
                                  AEGP_GlobalRefcon refconP, const A_char* utf8_match_nameZ,
                                  const A_char* tracker_nameZ, const PT_TrackerEntryPoints* entry_pointsP);
    A_Err (*AEGP_RegisterInteractiveArtisan)(A_Version api_version, A_Version artisan_version,
                                             AEGP_PluginID aegp_plugin_id, void* aegp_refconPV,
                                             const A_char* utf8_match_nameZ, const A_char* artisan_nameZ,
                                             PR_ArtisanEntryPoints* entry_funcs);
    A_Err (*AEGP_RegisterPresetLocalizationString)(const A_char* english_nameZ, const A_char* localized_nameZ);
} AEGP_RegisterSuite5;
