// An effect's parameters in the file, as the flat list that hosts number.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/json_tree.h"
#include "model/value.h"

namespace lottie::document {

struct ParameterPlace {
    const JsonNode* node = nullptr;      // the parameter's object
    const JsonNode* property = nullptr;  // its `v`; null for groups and for data the file does not hold
    host::model::StreamType type = host::model::StreamType::no_data;
};

// Parameters 1, 2, ... of an effect object; 0, the input layer, is not in the file.
std::vector<ParameterPlace> parameters_of(const JsonTree& tree, const JsonNode& effect);

// Text of a string member, empty if there is none.
std::string string_member(const JsonTree& tree, const JsonNode& object, std::string_view key);
std::optional<double> number_member(const JsonTree& tree, const JsonNode& object, std::string_view key);

// An instance's name without the number that tells it from others of its layer, as in "Fill 2".
std::string fresh_name(const std::string& name);

// Equal for instances of one effect whose fresh copies would be alike: a copy that is made parameter by parameter gets
// the values, but not the name, nor the value behind an expression, nor data that the host cannot read.
std::string structure_of(const JsonTree& tree, const JsonNode& effect, const std::vector<ParameterPlace>& parameters);

}  // namespace lottie::document
