// Import and export plug-ins: the types that footage and registration name.
#ifndef AEGP_AE_IO_H_
#define AEGP_AE_IO_H_

#include "A.h"

typedef A_long AEIO_FileType;
typedef struct AEIO_ModuleInfo AEIO_ModuleInfo;
typedef struct _AEIO_FunctionBlock4 AEIO_FunctionBlock4;

#endif  // AEGP_AE_IO_H_
