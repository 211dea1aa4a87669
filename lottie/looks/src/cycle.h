// Nests whose time remapping is played again and again.
#pragma once

#include <optional>
#include <string>

#include "json.h"
#include "unnesting.h"

namespace lottie::looks {

// For a nest whose time remapping an expression cycles: the expression that cycles a property outside as that does.
std::optional<std::string> cycle_of(const Unnesting& u);

// Whether an expression drives the nest's clock in a way that cannot be told.
bool is_clock_unknown(const Unnesting& u);

// Whether a layer inside neither comes nor goes within the cycle.
bool is_on_throughout_cycle(const Unnesting& u, const SceneLayer& inner);

// Whether everything of the copy that has keyframes is cycled by that expression, and nothing else is. A text cannot
// be.
bool is_cycled(const Unnesting& u, const Copy& copy, const std::string& cycle);

}  // namespace lottie::looks
