// The process's locale, in which plug-ins read narrow text.
#include "runner/utf8_locale.h"

#include <clocale>
#include <initializer_list>

namespace host::runner {

bool use_utf8_locale() {
    for (const char* name : {"C.UTF-8", "C.utf8", "en_US.UTF-8"}) {
        if (std::setlocale(LC_CTYPE, name) != nullptr) return true;
    }
    return false;
}

}  // namespace host::runner
