// What an expression asks of its surroundings, told from its text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lottie::looks {

// Whose facts an expression asks for: its own layer's, or perhaps those of any layer.
enum class Whose { nobody, own, any };

struct ExpressionUse {
    bool reads_time = false;
    bool is_relative_to_keys = false;  // also asks when keyframes are: moved with them, it mostly computes the same
    bool reads_index = false;
    bool is_random = false;
    bool is_seeded = false;
    bool reads_own_value = false;                  // or may: of the property, or a transform of its own layer
    bool has_computed_layer = false;               // or may: layer(...) with anything but a literal
    bool works_out_layer = false;                  // the same, but for names and numbers that stand somewhere in it
    bool counts_layers = false;                    // how many a composition has, and not one that is named
    bool reads_other_index = false;                // the number of another layer, or may
    bool reads_names = false;                      // what any layer is called
    bool reads_masks = false;                      // of any layer
    bool numbers_masks = false;                    // or may: masks by their number
    bool reads_transforms = false;                 // of any layer, numbers other than the property's own among them
    bool reads_opacity = false;                    // likewise
    bool converts_points = false;                  // from a layer to its composition, or back, and not both
    Whose parent = Whose::nobody;                  // which it is, or whether there is one
    Whose span = Whose::nobody;                    // when it begins and ends
    std::vector<std::string> composition_members;  // of thisComp, layers aside: "width", "numLayers", ...
    std::vector<double> layer_numbers;             // layer(3)
    std::vector<std::pair<std::string, double>> layer_numbers_elsewhere;  // comp("Name").layer(3)
    // comp("Name").layer("Name"), where nothing but what that layer holds is read
    std::vector<std::pair<std::string, std::string>> layers_elsewhere;
    std::vector<std::string> compositions;  // comp("Name"); empty if worked out
};

// What it costs to ask an expression's text all of this.
inline constexpr std::size_t kStepsPerCharacter = 4;

ExpressionUse read_expression(std::string_view text);

// Whether it gives the property's own value, or plays its keyframes in a loop, and nothing else: what moves and turns
// the value moves and turns what comes out.
bool is_carried_along(std::string_view expression);

// Whether it gives the property's own value and nothing else.
bool is_own_value(std::string_view expression);

// Whether a property, whose expression this is, gives the same whatever value it holds: the expression asks neither for
// that nor for anything of its own layer's transform. `layer` is the layer's name.
bool is_independent_of_own_value(std::string_view expression, std::string_view layer);

}  // namespace lottie::looks
