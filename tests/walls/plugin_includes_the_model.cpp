// Must not build: the plug-in sees nothing of the host.
#include "model/layer.h"
