// Small helpers: clearing a record, and the chain of guarded calls.
#pragma once

#include <string.h>

#include "A.h"

// Fills a record with zero bytes.
#define AEFX_CLR_STRUCT(STRUCT) memset(&(STRUCT), 0, sizeof(STRUCT))

// Runs the call only while err is 0; its result becomes err.
#define ERR(FUNC)                \
    do {                         \
        if (err == A_Err_NONE) { \
            err = (FUNC);        \
        }                        \
    } while (0)

// Runs the call whatever err is, with its result in err2; err keeps the first failure.
#define ERR2(FUNC)               \
    do {                         \
        err2 = (FUNC);           \
        if (err == A_Err_NONE) { \
            err = err2;          \
        }                        \
    } while (0)
