// The error chain, noting each call that it makes. Stands before the usual header of this name on the include path.
#pragma once

#include <string.h>

#include "A.h"

#define AEFX_CLR_STRUCT(STRUCT) memset(&(STRUCT), 0, sizeof(STRUCT))

void note_call(const char* file, int line, const char* text);

#define ERR(FUNC)                                 \
    do {                                          \
        if (err == A_Err_NONE) {                  \
            note_call(__FILE__, __LINE__, #FUNC); \
            err = (FUNC);                         \
        }                                         \
    } while (0)

#define ERR2(FUNC)                            \
    do {                                      \
        note_call(__FILE__, __LINE__, #FUNC); \
        err2 = (FUNC);                        \
        if (err == A_Err_NONE) {              \
            err = err2;                       \
        }                                     \
    } while (0)
