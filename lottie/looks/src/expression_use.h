// What an expression asks of its surroundings, told from its text.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lottie::looks {

struct ExpressionUse {
    bool reads_time = false;
    bool is_relative_to_keys = false;  // also asks when keyframes are: moved with them, it mostly computes the same
    bool reads_index = false;
    bool is_random = false;
    bool is_seeded = false;
    bool reads_own_value = false;                  // or may: of the property, or a transform of its own layer
    bool reads_layers = false;                     // or may: what any property or layer holds, its own too
    bool has_computed_layer = false;               // layer(...) with anything but a literal
    std::vector<std::string> composition_members;  // of thisComp, layers aside: "width", "numLayers", ...
    std::vector<double> layer_numbers;             // layer(3)
    std::vector<std::pair<std::string, double>> layer_numbers_elsewhere;  // comp("Name").layer(3)
    // comp("Name").layer("Name"), where nothing but what that layer holds is read
    std::vector<std::pair<std::string, std::string>> layers_elsewhere;
    std::vector<std::string> compositions;  // comp("Name"); empty if worked out
};

ExpressionUse read_expression(std::string_view text);

// Whether a property, whose expression this is, gives the same whatever value it holds: the expression asks neither for
// that nor for anything of its own layer's transform. `layer` is the layer's name.
bool is_independent_of_own_value(std::string_view expression, std::string_view layer);

}  // namespace lottie::looks
