// Basic types of the suite mechanism.
#pragma once

#include <stdint.h>

#include "AEConfig.h"

typedef int32_t int32;
typedef uint8_t uint8;

// One byte, except on Windows.
#ifdef AE_OS_WIN
typedef int32 SPBoolean;
#else
typedef uint8 SPBoolean;
#endif

typedef int32 SPErr;
