// Footage. What a project has adopted must not be disposed of.
#pragma once

#include "AE_IO.h"
#include "aegp_types/color.h"
#include "aegp_types/footage.h"
#include "aegp_types/handles.h"
#include "aegp_types/project.h"
#include "aegp_types/sound.h"

typedef struct AEGP_FootageSuite5 {
    A_Err (*AEGP_GetMainFootageFromItem)(AEGP_ItemH itemH, AEGP_FootageH* footagePH);
    A_Err (*AEGP_GetProxyFootageFromItem)(AEGP_ItemH itemH, AEGP_FootageH* proxy_footagePH);
    A_Err (*AEGP_GetFootageNumFiles)(AEGP_FootageH footageH, A_long* num_main_filesPL0, A_long* files_per_framePL0);
    A_Err (*AEGP_GetFootagePath)(AEGP_FootageH footageH, A_long frame_numL, A_long file_indexL,
                                 AEGP_MemHandle* unicode_pathPH);
    A_Err (*AEGP_GetFootageSignature)(AEGP_FootageH footageH, AEGP_FootageSignature* sigP);
    A_Err (*AEGP_NewFootage)(AEGP_PluginID aegp_plugin_id, const A_UTF16Char* pathZ,
                             const AEGP_FootageLayerKey* layer_infoP0,
                             const AEGP_FileSequenceImportOptions* sequence_optionsP0,
                             AEGP_InterpretationStyle interp_style, void* reserved, AEGP_FootageH* footagePH);
    A_Err (*AEGP_AddFootageToProject)(AEGP_FootageH footageH, AEGP_ItemH folderH, AEGP_ItemH* added_itemPH0);
    A_Err (*AEGP_SetItemProxyFootage)(AEGP_FootageH footageH, AEGP_ItemH itemH);
    A_Err (*AEGP_ReplaceItemMainFootage)(AEGP_FootageH footageH, AEGP_ItemH itemH);
    A_Err (*AEGP_DisposeFootage)(AEGP_FootageH footageH);
    A_Err (*AEGP_GetFootageInterpretation)(AEGP_ItemH itemH, A_Boolean proxyB, AEGP_FootageInterp* interpP);
    A_Err (*AEGP_SetFootageInterpretation)(AEGP_ItemH itemH, A_Boolean proxyB, const AEGP_FootageInterp* interpP);
    A_Err (*AEGP_GetFootageLayerKey)(AEGP_FootageH footageH, AEGP_FootageLayerKey* layerKeyP);
    A_Err (*AEGP_NewPlaceholderFootage)(AEGP_PluginID plugin_id, const A_char* nameZ, A_long width, A_long height,
                                        const A_Time* durationPT, AEGP_FootageH* footagePH);
    A_Err (*AEGP_NewPlaceholderFootageWithPath)(AEGP_PluginID plugin_id, const A_UTF16Char* pathZ,
                                                AEGP_Platform path_platform, AEIO_FileType file_type, A_long widthL,
                                                A_long heightL, const A_Time* durationPT, AEGP_FootageH* footagePH);
    A_Err (*AEGP_NewSolidFootage)(const A_char* nameZ, A_long width, A_long height, const AEGP_ColorVal* colorP,
                                  AEGP_FootageH* footagePH);
    A_Err (*AEGP_GetSolidFootageColor)(AEGP_ItemH itemH, A_Boolean proxyB, AEGP_ColorVal* colorP);
    A_Err (*AEGP_SetSolidFootageColor)(AEGP_ItemH itemH, A_Boolean proxyB, const AEGP_ColorVal* colorP);
    A_Err (*AEGP_SetSolidFootageDimensions)(AEGP_ItemH itemH, A_Boolean proxyB, A_long widthL, A_long heightL);
    A_Err (*AEGP_GetFootageSoundDataFormat)(AEGP_FootageH footageH, AEGP_SoundDataFormat* sound_formatP);
    A_Err (*AEGP_GetFootageSequenceImportOptions)(AEGP_FootageH footageH, AEGP_FileSequenceImportOptions* optionsP);
} AEGP_FootageSuite5;
