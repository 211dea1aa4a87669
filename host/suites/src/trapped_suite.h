// Suite tables in which every slot answers "not implemented".
#pragma once

#include "AE_GeneralPlug.h"

namespace host::suites {

// Each slot passes the observers, is named in the diagnostics and returns kNotImplemented.
template <class Suite>
Suite trapped_suite();
// A table with what this host implements; the files of the suite families define them.
template <class Suite>
Suite make_suite();

#define SUITE(structure, accessor, name, version) \
    template <>                                   \
    structure trapped_suite<structure>();         \
    template <>                                   \
    structure make_suite<structure>();
#include "suites.def"

}  // namespace host::suites
