// Must not build: what stands under src/ is a room's own.
#include "skeleton.h"
