// Import and export plug-ins: the types that footage and registration name.
#pragma once

#include "A.h"

typedef A_long AEIO_FileType;
typedef struct AEIO_ModuleInfo AEIO_ModuleInfo;
typedef struct _AEIO_FunctionBlock4 AEIO_FunctionBlock4;
