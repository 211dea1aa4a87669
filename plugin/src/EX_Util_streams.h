// The keyframe attributes that transform and effect copying carry over in the same way.
#pragma once

#include "AEGP_SuiteHandler.h"
#include "PluginInfo.h"

bool is_spatial(AEGP_StreamType type);

A_Err copy_interpolation(AEGP_SuiteHandler& suites, AEGP_StreamRefH source, AEGP_KeyframeIndex source_index,
                         AEGP_StreamRefH destination, AEGP_KeyframeIndex destination_index);

A_Err copy_spatial_tangents(const PluginInfo* info, AEGP_SuiteHandler& suites, AEGP_StreamRefH source,
                            AEGP_KeyframeIndex source_index, AEGP_StreamRefH destination,
                            AEGP_KeyframeIndex destination_index);
