// Colours as the host's palettes, solids and streams keep them: alpha first, 0 to 1.
#pragma once

#include "A.h"

typedef struct AEGP_ColorVal {
    A_FpLong alphaF;
    A_FpLong redF;
    A_FpLong greenF;
    A_FpLong blueF;
} AEGP_ColorVal;
