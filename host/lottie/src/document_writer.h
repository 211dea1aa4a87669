// The whole project as a document.
#pragma once

#include <string>

#include "store.h"

namespace host::lottie {

std::string write_document(const Store& store);

}  // namespace host::lottie
