// Effects: the installed ones and those on layers.
#pragma once

#include "AE_Effect.h"

#define AEGP_MAX_EFFECT_NAME_SIZE 48
#define AEGP_MAX_EFFECT_MATCH_NAME_SIZE 48
#define AEGP_MAX_EFFECT_CATEGORY_NAME_SIZE 32

// A number, not a handle; the same as long as the host runs.
typedef A_long AEGP_InstalledEffectKey;
#define AEGP_InstalledEffectKey_NONE 0

typedef A_long AEGP_EffectIndex;

typedef A_long AEGP_EffectFlags;
enum {
    AEGP_EffectFlags_NONE = 0,
    AEGP_EffectFlags_ACTIVE = 1 << 0,
    AEGP_EffectFlags_AUDIO_ONLY = 1 << 1,
    AEGP_EffectFlags_AUDIO_TOO = 1 << 2,
    AEGP_EffectFlags_MISSING = 1 << 3,
};
