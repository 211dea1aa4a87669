// The two records that travel with every operation: the way to the host, and the choices of the run.
#pragma once

#include "AE_GeneralPlug.h"

// What the user chose in the dialog. Flags are 1 or 0.
struct CommandOptions {
    unsigned char copy_attributes;         // carry timing, transform, effects and the 3D switch over
    unsigned char delete_source;           // delete the pre-comp when nothing else uses it
    unsigned char keep_in_comp;            // keep the pre-comp layer, with its video off
    char has_prefix;                       // first character of the typed prefix, 0 when none was typed
    unsigned char prepend_precomp_name;    // put the pre-comp layer's name in front of the new names
    unsigned char fix_random_expressions;  // give every expression of the copies a fixed seed
};

// Lives on the stack of one callback and owns nothing.
struct PluginInfo {
    SPBasicSuite* pica_basicP;  // each operation builds its own AEGP_SuiteHandler from it
    AEGP_PluginID plugin_id;
    CommandOptions* options;  // null outside a run
};
