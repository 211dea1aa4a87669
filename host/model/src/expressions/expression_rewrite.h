// Rewrites names in expressions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/comp.h"
#include "model/stream.h"

namespace host::model {

// Renames the layer in every reference to the composition's layer `old_name`, keeping the kind of quotes.
void rewrite_layer_name(const std::vector<Stream*>& streams, const Comp& comp, const std::string& old_name,
                        const std::string& new_name);

// The same for the composition's name in comp("...").layer("...").
void rewrite_comp_name(const std::vector<Stream*>& streams, const std::string& old_name, const std::string& new_name);

// The expression with every literal `old_name` in single or double quotes replaced.
std::string with_quoted_replaced(std::string_view expression, std::string_view old_name, std::string_view new_name);

}  // namespace host::model
