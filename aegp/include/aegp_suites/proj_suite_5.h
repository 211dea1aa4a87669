// Projects, version 5: AEGP_TimeDisplay2.
#pragma once

#include "aegp_types/handles.h"
#include "aegp_types/project.h"

typedef struct AEGP_ProjSuite5 {
    A_Err (*AEGP_GetNumProjects)(A_long* num_projPL);
    A_Err (*AEGP_GetProjectByIndex)(A_long proj_indexL, AEGP_ProjectH* projPH);
    A_Err (*AEGP_GetProjectName)(AEGP_ProjectH projH, A_char* nameZ);
    A_Err (*AEGP_GetProjectPath)(AEGP_ProjectH projH, AEGP_MemHandle* unicode_pathPH);
    A_Err (*AEGP_GetProjectRootFolder)(AEGP_ProjectH projH, AEGP_ItemH* root_folderPH);
    A_Err (*AEGP_SaveProjectToPath)(AEGP_ProjectH projH, const A_UTF16Char* pathZ);
    A_Err (*AEGP_GetProjectTimeDisplay)(AEGP_ProjectH projH, AEGP_TimeDisplay2* time_displayP);
    A_Err (*AEGP_SetProjectTimeDisplay)(AEGP_ProjectH projH, const AEGP_TimeDisplay2* time_displayP);
    A_Err (*AEGP_ProjectIsDirty)(AEGP_ProjectH projH, A_Boolean* is_dirtyPB);
    A_Err (*AEGP_SaveProjectAs)(AEGP_ProjectH projH, const A_UTF16Char* pathZ);
    A_Err (*AEGP_NewProject)(AEGP_ProjectH* new_projectPH);
    A_Err (*AEGP_OpenProjectFromPath)(const A_UTF16Char* pathZ, AEGP_ProjectH* projectPH);
    A_Err (*AEGP_GetProjectBitDepth)(AEGP_ProjectH projectH, AEGP_ProjBitDepth* bit_depthP);
    A_Err (*AEGP_SetProjectBitDepth)(AEGP_ProjectH projectH, AEGP_ProjBitDepth bit_depth);
} AEGP_ProjSuite5;
