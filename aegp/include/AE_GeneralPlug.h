// Everything a general plug-in talks to the host with: types, suites of today, and the older suites.
#pragma once

#include "A.h"
#include "AE_Effect.h"
#include "AE_IO.h"
#include "PR_Public.h"
#include "PT_Public.h"
#include "SPBasic.h"

#include "aegp_types/collection.h"
#include "aegp_types/color.h"
#include "aegp_types/command.h"
#include "aegp_types/comp.h"
#include "aegp_types/effect.h"
#include "aegp_types/footage.h"
#include "aegp_types/handles.h"
#include "aegp_types/hook.h"
#include "aegp_types/item.h"
#include "aegp_types/keyframe.h"
#include "aegp_types/layer.h"
#include "aegp_types/memory.h"
#include "aegp_types/plugin.h"
#include "aegp_types/project.h"
#include "aegp_types/sound.h"
#include "aegp_types/stream.h"

#include "aegp_suites/names_and_versions.h"

#include "aegp_suites/collection_suite_2.h"
#include "aegp_suites/command_suite_1.h"
#include "aegp_suites/footage_suite_5.h"
#include "aegp_suites/memory_suite_1.h"
#include "aegp_suites/proj_suite_6.h"
#include "aegp_suites/register_suite_5.h"
#include "aegp_suites/utility_suite_6.h"

#include "AE_GeneralPlugOld.h"
