// The whole project as a document.
#pragma once

#include <string>

#include "document/written.h"
#include "shared/store.h"

namespace lottie::document {

Written write_document(const Store& store);

}  // namespace lottie::document
