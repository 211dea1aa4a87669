// From the outline of a document to a project.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "document/outline.h"
#include "model/host_rules.h"
#include "shared/store.h"

namespace lottie::document {

// Throws InputError.
std::unique_ptr<Store> build_store(std::string text, const host::model::HostRules& rules,
                                   std::optional<DocumentOutline> outline = std::nullopt);

}  // namespace lottie::document
