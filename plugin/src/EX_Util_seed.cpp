// Fixed random seeds in front of expressions, so that randomised expressions keep their look.
#include <string>

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"

A_Err add_random_seed_to_all_expressions(const PluginInfo* info, AEGP_LayerH layer, int seed) {
    // Not AEGP_LayerStream_NUMTYPES: that grows with the host's editions.
    constexpr int kLastStream = 58;
    A_Err err = A_Err_NONE;

    for (int stream = 0; stream <= kLastStream; ++stream) {
        ERR(add_random_seed_to_expressions(info, layer, seed, stream));
    }
    return err;
}

A_Err add_random_seed_to_expressions(const PluginInfo* info, AEGP_LayerH layer, int seed, int whichStream) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    A_Boolean legal = false;
    A_Boolean can_vary = false;
    A_Boolean time_varying = false;
    AEGP_StreamRefH stream = nullptr;  // never disposed: it stays with the host
    AEGP_MemHandle expression = nullptr;
    void* text = nullptr;

    ERR(suites.StreamSuite4()->AEGP_IsStreamLegal(layer, whichStream, &legal));
    if (!legal) return err;

    ERR(suites.StreamSuite4()->AEGP_GetNewLayerStream(info->plugin_id, layer, whichStream, &stream));
    ERR(suites.StreamSuite4()->AEGP_CanVaryOverTime(stream, &can_vary));
    if (!can_vary) return err;

    ERR(suites.StreamSuite4()->AEGP_IsStreamTimevarying(stream, &time_varying));
    if (!time_varying) return err;

    ERR(suites.StreamSuite4()->AEGP_GetExpression(info->plugin_id, stream, &expression));
    if (err != A_Err_NONE || expression == nullptr) return err;

    ERR(suites.MemorySuite1()->AEGP_LockMemHandle(expression, &text));
    std::string seeded = "seedRandom(" + std::to_string(seed) + "); // this line was added by Exflate \n\n";
    if (text != nullptr) seeded += static_cast<const A_char*>(text);
    // Freed while it is still locked.
    ERR(suites.MemorySuite1()->AEGP_FreeMemHandle(expression));

    ERR(suites.StreamSuite4()->AEGP_SetExpression(info->plugin_id, stream, seeded.c_str()));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
