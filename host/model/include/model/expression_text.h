// Reading expression source far enough to find the layers it names.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace host::model {

// A call such as thisComp.layer("Name") or comp("Comp").layer('Name') found in an expression.
struct LayerReference {
    std::string comp;   // decoded name given to comp(...); empty for the expression's own composition
    std::string layer;  // decoded name given to layer(...)
    std::size_t begin;  // of the name's literal in the text, quotes included
    std::size_t end;
    std::size_t comp_begin = 0;  // likewise of the composition's name; both 0 without one
    std::size_t comp_end = 0;
};

// References with literal names, in order; comments and other strings are passed over. Receivers that cannot be told
// from the text (a variable) are left out, as are names built at run time and functions that the text redefines.
std::vector<LayerReference> find_layer_references(std::string_view expression);

// Every literal in single or double quotes equal to `name`, as positions quotes included.
std::vector<std::pair<std::size_t, std::size_t>> find_quoted(std::string_view expression, std::string_view name);

// `name` as a literal in the given kind of quote (', " or `), escaped as needed.
std::string quote(std::string_view name, char quote_mark);

}  // namespace host::model
