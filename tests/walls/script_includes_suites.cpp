// Must not build: scripts and suites do not know each other.
#include "suites/suite_host.h"
