// The whole project as a document.
#pragma once

#include <string>

#include "lottie/written.h"
#include "store.h"

namespace host::lottie {

Written write_document(const Store& store);

}  // namespace host::lottie
