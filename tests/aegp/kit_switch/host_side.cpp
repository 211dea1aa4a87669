// Sees our own headers whatever the plug-in is built against.
#include "AE_GeneralPlug.h"

#ifdef STAND_IN_KIT
#error "these are the kit's headers"
#endif

int main() {
    int slots = 0;
#define SLOT(structure, index, function) ++slots;
#include "suites.def"
    return slots == 620 ? 0 : 1;
}
