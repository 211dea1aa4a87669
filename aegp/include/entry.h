// DllExport, which makes the entry point visible to the host when everything else is hidden.
#pragma once

#include "AEConfig.h"

#ifdef AE_OS_WIN
#define DllExport __declspec(dllexport)
#else
#define DllExport __attribute__((visibility("default")))
#endif
