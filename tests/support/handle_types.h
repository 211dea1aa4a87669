// Which types are handles: what a plug-in holds of the host's and cannot look into.
#pragma once

#include "AE_GeneralPlug.h"

template <class T>
inline constexpr bool is_handle = false;
#define HANDLE(type) \
    template <>      \
    inline constexpr bool is_handle<type> = true;
HANDLE(AEGP_ProjectH)
HANDLE(AEGP_ItemH)
HANDLE(AEGP_CompH)
HANDLE(AEGP_LayerH)
HANDLE(AEGP_FootageH)
HANDLE(AEGP_Collection2H)
HANDLE(AEGP_StreamRefH)
HANDLE(AEGP_EffectRefH)
HANDLE(AEGP_MemHandle)
HANDLE(AEGP_AddKeyframesInfoH)
#undef HANDLE
