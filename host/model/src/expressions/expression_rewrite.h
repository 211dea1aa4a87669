// Rewriting the names that expressions quote.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/comp.h"
#include "model/stream.h"

namespace host::model {

// In each stream's expression, every reference to a layer `old_name` of the composition names `new_name` from now on,
// in the kind of quotes it has.
void rewrite_layer_name(const std::vector<Stream*>& streams, const Comp& comp, const std::string& old_name,
                        const std::string& new_name);

// Likewise for the composition's own name in comp("...").layer("...").
void rewrite_comp_name(const std::vector<Stream*>& streams, const std::string& old_name, const std::string& new_name);

// The text with every literal `old_name` in single or double quotes replaced.
std::string with_quoted_replaced(std::string_view expression, std::string_view old_name, std::string_view new_name);

}  // namespace host::model
