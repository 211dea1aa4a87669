// The basic suite: the table that a plug-in is given.
#pragma once

#include "SPBasic.h"

namespace host::suites {

SPBasicSuite* basic_suite();

}  // namespace host::suites
