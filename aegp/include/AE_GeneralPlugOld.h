// Suites that newer versions have superseded; the host still answers to them.
#pragma once

#include "aegp_suites/names_and_versions.h"

#include "aegp_suites/comp_suite_11.h"
#include "aegp_suites/comp_suite_4.h"
#include "aegp_suites/comp_suite_6.h"
#include "aegp_suites/comp_suite_7.h"
#include "aegp_suites/effect_suite_3.h"
#include "aegp_suites/item_suite_1.h"
#include "aegp_suites/item_suite_5.h"
#include "aegp_suites/item_suite_6.h"
#include "aegp_suites/item_suite_8.h"
#include "aegp_suites/keyframe_suite_4.h"
#include "aegp_suites/layer_suite_4.h"
#include "aegp_suites/layer_suite_5.h"
#include "aegp_suites/layer_suite_6.h"
#include "aegp_suites/layer_suite_7.h"
#include "aegp_suites/proj_suite_5.h"
#include "aegp_suites/stream_suite_4.h"
#include "aegp_suites/utility_suite_3.h"

#include "aegp_types/older_values.h"
