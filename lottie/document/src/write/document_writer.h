// The whole project as a document.
#pragma once

#include <string>

#include "document/output_text.h"
#include "shared/store.h"

namespace lottie::document {

OutputText write_document(const Store& store);

}  // namespace lottie::document
