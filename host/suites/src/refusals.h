// Throws the errors of suite functions.
#pragma once

#include <string>

#include "model/error.h"

namespace host::suites {

[[noreturn]] inline void refuse_argument(const std::string& sentence) {
    throw model::Error(model::ErrorKind::bad_argument, sentence);
}
[[noreturn]] inline void refuse_state(const std::string& sentence) {
    throw model::Error(model::ErrorKind::not_allowed, sentence);
}
[[noreturn]] inline void refuse_as_unsupported(const std::string& sentence) {
    throw model::Error(model::ErrorKind::unsupported, sentence);
}

}  // namespace host::suites
