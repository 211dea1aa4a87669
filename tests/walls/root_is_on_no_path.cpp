// Must not build: the root of the repository is on nobody's include path.
#include "host/model/include/model/layer.h"
