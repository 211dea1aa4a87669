// Items of the project, version 6: walks one project from its first item; with labels.
#pragma once

#include "aegp_types/handles.h"
#include "aegp_types/item.h"

typedef struct AEGP_ItemSuite6 {
    A_Err (*AEGP_GetFirstProjItem)(AEGP_ProjectH projectH, AEGP_ItemH* itemPH);
    A_Err (*AEGP_GetNextProjItem)(AEGP_ProjectH projectH, AEGP_ItemH itemH, AEGP_ItemH* next_itemPH);
    A_Err (*AEGP_GetActiveItem)(AEGP_ItemH* itemPH);
    A_Err (*AEGP_IsItemSelected)(AEGP_ItemH itemH, A_Boolean* selectedPB);
    A_Err (*AEGP_SelectItem)(AEGP_ItemH itemH, A_Boolean selectB, A_Boolean deselect_othersB);
    A_Err (*AEGP_GetItemType)(AEGP_ItemH itemH, AEGP_ItemType* item_typeP);
    A_Err (*AEGP_GetTypeName)(AEGP_ItemType item_type, A_char* nameZ);
    A_Err (*AEGP_GetItemName)(AEGP_ItemH itemH, A_char* nameZ);
    A_Err (*AEGP_SetItemName)(AEGP_ItemH itemH, const A_char* nameZ);
    A_Err (*AEGP_GetItemID)(AEGP_ItemH itemH, A_long* item_idPL);
    A_Err (*AEGP_GetItemFlags)(AEGP_ItemH itemH, AEGP_ItemFlags* item_flagsP);
    A_Err (*AEGP_SetItemUseProxy)(AEGP_ItemH itemH, A_Boolean use_proxyB);
    A_Err (*AEGP_GetItemParentFolder)(AEGP_ItemH itemH, AEGP_ItemH* parent_folder_itemPH);
    A_Err (*AEGP_SetItemParentFolder)(AEGP_ItemH itemH, AEGP_ItemH parent_folder_itemH);
    A_Err (*AEGP_GetItemDuration)(AEGP_ItemH itemH, A_Time* durationPT);
    A_Err (*AEGP_GetItemCurrentTime)(AEGP_ItemH itemH, A_Time* curr_timePT);
    A_Err (*AEGP_GetItemDimensions)(AEGP_ItemH itemH, A_long* widthPL, A_long* heightPL);
    A_Err (*AEGP_GetItemPixelAspectRatio)(AEGP_ItemH itemH, A_Ratio* pix_aspect_ratioPRt);
    A_Err (*AEGP_DeleteItem)(AEGP_ItemH itemH);
    A_Err (*AEGP_CreateNewFolder)(const A_char* nameZ, AEGP_ItemH parent_folderH0, AEGP_ItemH* new_folderPH);
    A_Err (*AEGP_SetItemCurrentTime)(AEGP_ItemH itemH, const A_Time* new_timePT);
    A_Err (*AEGP_GetItemCommentLength)(AEGP_ItemH itemH, A_u_long* buf_sizePLu);
    A_Err (*AEGP_GetItemComment)(AEGP_ItemH itemH, A_u_long buf_sizeLu, A_char* commentZ);
    A_Err (*AEGP_SetItemComment)(AEGP_ItemH itemH, const A_char* commentZ);
    A_Err (*AEGP_GetItemLabel)(AEGP_ItemH itemH, AEGP_LabelID* labelP);
    A_Err (*AEGP_SetItemLabel)(AEGP_ItemH itemH, AEGP_LabelID label);
} AEGP_ItemSuite6;
