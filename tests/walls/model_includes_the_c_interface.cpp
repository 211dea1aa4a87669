// Must not build: the model knows no C interface.
#include "AE_GeneralPlug.h"
