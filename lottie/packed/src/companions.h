// Texts of a .lottie archive that name parts of its animations: state machines name layers, themes fill slots.
#pragma once

#include <map>
#include <set>
#include <string>

namespace lottie::packed {

// A text that is no JSON names nothing: players cannot use it either.
std::set<std::string> layers_named_in(const std::string& state_machine);
std::set<std::string> slots_filled_by(const std::string& theme);

// With new names of layers in the place of old ones; all else is as it was, white space apart.
std::string with_layers_renamed(const std::string& state_machine, const std::map<std::string, std::string>& names);

}  // namespace lottie::packed
