// All that can be seen of a project, to be compared before and after.
#pragma once

#include <string>
#include <vector>

#include "model/project.h"

namespace host::model::testing {

// One line for each item and layer, addresses and data pointers included. Reads what is unread.
std::vector<std::string> snapshot(const Project& project);

// Checks that what the project says twice is the same both times: indices, numbers, links in both directions, names.
void expect_consistent(const Project& project);

}  // namespace host::model::testing
