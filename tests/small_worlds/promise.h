// What the command promises, told once more in the fewest words and without the plug-in: the reference for small
// worlds.
#pragma once

#include <string>
#include <vector>

#include "state.h"

namespace small_worlds {

// What the dialog asks.
struct Choices {
    bool copy_attributes = true;
    bool delete_source = false;
    bool keep_in_comp = false;
    bool prepend_name = false;
    bool fix_random = false;
    std::string prefix = {};
};

// The state after the command has run on these layers of "Main", selected in this order.
State promised(State before, const std::vector<int>& selected_ids, const Choices& choices);

}  // namespace small_worlds
