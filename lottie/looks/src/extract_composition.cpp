// One composition of an animation as an animation of its own.
#include "looks/extract_composition.h"

#include <cmath>
#include <stdexcept>

#include "scene.h"

namespace lottie::looks {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The text of the array of layers.
std::string_view layers_text(std::string_view animation, std::string_view id) {
    TextReader reader(animation);
    reader.enter_object();
    std::string key;
    std::string_view found;
    while (reader.next_member(key)) {
        if (key != "assets" || !reader.enter_array()) {
            if (key != "assets") reader.skip();
            continue;
        }
        while (reader.next_element()) {
            if (!reader.enter_object()) continue;
            std::string_view layers;
            std::string own_id;
            while (reader.next_member(key)) {
                const std::string_view value = reader.skip();
                if (key == "layers") layers = value;
                if (key == "id") own_id = string_of(value);
            }
            if (own_id == id && !layers.empty() && found.empty()) found = layers;
        }
    }
    return found;
}

}  // namespace

ExtractedComposition extract_composition(std::string_view animation, std::string_view id) {
    const Scene scene(animation);
    const auto* stack = scene.find(id);
    if (stack == nullptr) throw std::invalid_argument("the animation has no composition of that id");
    if (id.empty()) return {std::string(animation), (*stack)->first_frame};
    if (animation.starts_with(kByteOrderMark)) animation.remove_prefix(kByteOrderMark.size());

    std::string text = "{";
    const auto add = [&text](std::string_view key, std::string_view value) {
        if (text.size() > 1) text += ',';
        (((text += '"') += key) += "\":") += value;
    };
    const auto add_number = [&add](std::string_view key, double value) {
        add(key, std::to_string(static_cast<long long>(std::ceil(value))));  // some players take whole numbers only
    };
    TextReader reader(animation);
    reader.enter_object();
    std::string key;
    while (reader.next_member(key)) {
        const std::string_view value = reader.skip();
        if (key != "w" && key != "h" && key != "ip" && key != "op" && key != "layers") add(key, value);
    }
    add_number("w", (*stack)->width);
    add_number("h", (*stack)->height);
    add_number("ip", (*stack)->first_frame);
    add_number("op", (*stack)->end_frame);
    add("layers", layers_text(animation, id));
    return {text + "}", (*stack)->first_frame};
}

}  // namespace lottie::looks
