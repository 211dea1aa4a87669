// Must not build: the file format does not know the script engine.
#include "script/engine.h"
