// Effects on layers, and the installed ones.
#pragma once

#include "AE_Effect.h"
#include "aegp_types/effect.h"
#include "aegp_types/handles.h"

typedef struct AEGP_EffectSuite3 {
    A_Err (*AEGP_GetLayerNumEffects)(AEGP_LayerH layerH, A_long* num_effectsPL);
    A_Err (*AEGP_GetLayerEffectByIndex)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                                        AEGP_EffectIndex layer_effect_indexL, AEGP_EffectRefH* effectPH);
    A_Err (*AEGP_GetInstalledKeyFromLayerEffect)(AEGP_EffectRefH effect_refH,
                                                 AEGP_InstalledEffectKey* installed_effect_keyP);
    A_Err (*AEGP_GetEffectParamUnionByIndex)(AEGP_PluginID aegp_plugin_id, AEGP_EffectRefH effect_refH,
                                             PF_ParamIndex param_index, PF_ParamType* param_typeP,
                                             PF_ParamDefUnion* uP0);
    A_Err (*AEGP_GetEffectFlags)(AEGP_EffectRefH effect_refH, AEGP_EffectFlags* effect_flagsP);
    A_Err (*AEGP_SetEffectFlags)(AEGP_EffectRefH effect_refH, AEGP_EffectFlags effect_flags_set_mask,
                                 AEGP_EffectFlags effect_flags);
    A_Err (*AEGP_ReorderEffect)(AEGP_EffectRefH effect_refH, A_long effect_indexL);
    A_Err (*AEGP_EffectCallGeneric)(AEGP_PluginID aegp_plugin_id, AEGP_EffectRefH effect_refH, const A_Time* timePT,
                                    PF_Cmd effect_cmd, void* effect_extraPV);
    A_Err (*AEGP_DisposeEffect)(AEGP_EffectRefH effect_refH);
    A_Err (*AEGP_ApplyEffect)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
                              AEGP_InstalledEffectKey installed_effect_key, AEGP_EffectRefH* effect_refPH);
    A_Err (*AEGP_DeleteLayerEffect)(AEGP_EffectRefH effect_refH);
    A_Err (*AEGP_GetNumInstalledEffects)(A_long* num_installed_effectsPL);
    A_Err (*AEGP_GetNextInstalledEffect)(AEGP_InstalledEffectKey installed_effect_key,
                                         AEGP_InstalledEffectKey* next_effectPH);
    A_Err (*AEGP_GetEffectName)(AEGP_InstalledEffectKey installed_effect_key, A_char* nameZ);
    A_Err (*AEGP_GetEffectMatchName)(AEGP_InstalledEffectKey installed_effect_key, A_char* match_nameZ);
    A_Err (*AEGP_GetEffectCategory)(AEGP_InstalledEffectKey installed_effect_key, A_char* categoryZ);
    A_Err (*AEGP_DuplicateEffect)(AEGP_EffectRefH original_effect_refH, AEGP_EffectRefH* duplicate_effect_refPH);
} AEGP_EffectSuite3;
