// Finds the layers that an expression names.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace host::model {

// A call such as thisComp.layer("Name") or comp("Comp").layer('Name').
struct LayerReference {
    std::string comp;   // decoded name given to comp(...); empty for the expression's own composition
    std::string layer;  // decoded name given to layer(...)
    std::size_t begin;  // of the name's literal in the text, quotes included
    std::size_t end;
    std::size_t comp_begin = 0;  // likewise of the composition's name; both 0 without one
    std::size_t comp_end = 0;
};

// References by literal name, in order; not in comments or strings. Omits receivers that the source does not identify
// (a variable), names built at run time, and functions that the expression redefines.
std::vector<LayerReference> find_layer_references(std::string_view expression);

// The positions, quotes included, of all literals in single or double quotes equal to `name`.
std::vector<std::pair<std::size_t, std::size_t>> find_quoted(std::string_view expression, std::string_view name);

// `name` as a literal in the given quotes (', " or `), escaped as needed.
std::string quote(std::string_view name, char quote_mark);

}  // namespace host::model
