// Collections of selected things. Dispose of what the host or NewCollection made.
#pragma once

#include "aegp_types/collection.h"
#include "aegp_types/handles.h"

typedef struct AEGP_CollectionSuite2 {
    A_Err (*AEGP_NewCollection)(AEGP_PluginID plugin_id, AEGP_Collection2H* collectionPH);
    A_Err (*AEGP_DisposeCollection)(AEGP_Collection2H collectionH);
    A_Err (*AEGP_GetCollectionNumItems)(AEGP_Collection2H collectionH, A_u_long* num_itemsPL);
    A_Err (*AEGP_GetCollectionItemByIndex)(AEGP_Collection2H collectionH, A_u_long indexL,
                                           AEGP_CollectionItemV2* collection_itemP);
    A_Err (*AEGP_CollectionPushBack)(AEGP_Collection2H collectionH, const AEGP_CollectionItemV2* collection_itemP);
    A_Err (*AEGP_CollectionErase)(AEGP_Collection2H collectionH, A_u_long index_firstL, A_u_long index_lastL);
} AEGP_CollectionSuite2;
