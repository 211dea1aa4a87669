// The basic suite: the one table a plug-in is given, from which it acquires every other.
#pragma once

#include <stddef.h>

#include "SPTypes.h"

#define kSPBasicSuite "SP Basic Suite"
#define kSPBasicSuiteVersion 4
#define kSPNoError 0

typedef struct SPBasicSuite {
    // Gives the function table of that name and version; null and an error if there is none.
    SPErr (*AcquireSuite)(const char* name, int32 version, const void** suite);
    // Once for each successful AcquireSuite.
    SPErr (*ReleaseSuite)(const char* name, int32 version);
    SPBoolean (*IsEqual)(const char* token1, const char* token2);
    SPErr (*AllocateBlock)(size_t size, void** block);
    SPErr (*FreeBlock)(void* block);
    SPErr (*ReallocateBlock)(void* block, size_t newSize, void** newblock);
    SPErr (*Undefined)(void);
} SPBasicSuite;
