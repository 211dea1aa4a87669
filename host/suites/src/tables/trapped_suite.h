// Suite tables in which every slot returns "not implemented".
#pragma once

#include "AE_GeneralPlug.h"

namespace host::suites {

// Each slot notifies the observers, leaves a diagnostic and returns kNotImplemented.
template <class Suite>
Suite trapped_suite();
// A table with what this host implements, defined by the suite's file.
template <class Suite>
Suite make_suite();

#define SUITE(structure, accessor, name, version) \
    template <>                                   \
    structure trapped_suite<structure>();         \
    template <>                                   \
    structure make_suite<structure>();
#include "suites.def"

}  // namespace host::suites
