// The format of sound data.
#pragma once

#include "A.h"

typedef A_long AEGP_SoundEncoding;
enum {
    AEGP_SoundEncoding_UNSIGNED_PCM = 3,
    AEGP_SoundEncoding_SIGNED_PCM,
    AEGP_SoundEncoding_FLOAT,
    AEGP_SoundEncoding_END,
    AEGP_SoundEncoding_BEGIN = AEGP_SoundEncoding_UNSIGNED_PCM,
};

typedef struct AEGP_SoundDataFormat {
    A_FpLong sample_rateF;
    AEGP_SoundEncoding encoding;
    A_long bytes_per_sampleL;
    A_long num_channelsL;
} AEGP_SoundDataFormat;
