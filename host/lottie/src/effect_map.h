// An effect's parameters in the file, as the flat list that hosts number.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/value.h"
#include "tree.h"

namespace host::lottie {

struct ParameterPlace {
    const Tree::Node* node = nullptr;      // the parameter's object
    const Tree::Node* property = nullptr;  // its `v`; null for groups and for data the file does not hold
    model::StreamType type = model::StreamType::no_data;
};

// Parameters 1, 2, ... of an effect object; 0, the input layer, is not in the file.
std::vector<ParameterPlace> parameters_of(const Tree& tree, const Tree::Node& effect);

// Text of a string member, empty if there is none.
std::string string_member(const Tree& tree, const Tree::Node& object, std::string_view key);
std::optional<double> number_member(const Tree& tree, const Tree::Node& object, std::string_view key);

// Equal for instances of one effect.
std::string structure_of(const Tree& tree, const Tree::Node& effect, const std::vector<ParameterPlace>& parameters);

}  // namespace host::lottie
