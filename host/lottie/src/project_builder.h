// From the outline of a document to a project.
#pragma once

#include <memory>
#include <string>

#include "model/host_rules.h"
#include "store.h"

namespace host::lottie {

// Throws InputError.
std::unique_ptr<Store> build_store(std::string text, model::HostRules rules);

}  // namespace host::lottie
