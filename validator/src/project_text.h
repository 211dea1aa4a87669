// A project as text that is equal for equal projects, whichever process they are in.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/project.h"

namespace validator {

// A line for each item and each layer, in order; selections and what is in front are left out, for they are no content.
// Reads what is unread.
std::vector<std::string> project_text(host::model::Project& project);

std::uint64_t number_of(const std::vector<std::string>& lines);

// "layer 2 of 'Main': was ... is ...", of the first line that differs; empty if none does.
std::string first_difference(const std::vector<std::string>& before, const std::vector<std::string>& after);

}  // namespace validator
