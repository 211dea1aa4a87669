// The ways in which bodies refuse.
#pragma once

#include <string>

#include "host_state.h"
#include "model/error.h"
#include "model/layer.h"

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

// Edits of locked layers pass, unless the rules say otherwise.
inline void require_unlocked(const HostState& host, const model::Layer& layer) {
    if (host.project.rules().locked_layers_refuse_edits && layer.has_flag(model::kLocked))
        refuse_state("layer " + std::to_string(layer.id()) + " is locked");
}

}  // namespace host::suites
