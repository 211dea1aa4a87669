// Names and numbers as they stand in sentences.
#include "words.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

namespace lottie::looks {
namespace {

constexpr double kWhole = 0.0005;  // a frame that is this near has begun, as plain() writes it

using Named = std::pair<std::string_view, std::string_view>;

constexpr std::array<Named, 18> kProperties = {{{"ks.a", "Anchor Point"},
                                                {"ks.p", "Position"},
                                                {"ks.p.x", "X Position"},
                                                {"ks.p.y", "Y Position"},
                                                {"ks.p.z", "Z Position"},
                                                {"ks.px", "X Position"},
                                                {"ks.py", "Y Position"},
                                                {"ks.pz", "Z Position"},
                                                {"ks.s", "Scale"},
                                                {"ks.r", "Rotation"},
                                                {"ks.rx", "X Rotation"},
                                                {"ks.ry", "Y Rotation"},
                                                {"ks.rz", "Z Rotation"},
                                                {"ks.or", "Orientation"},
                                                {"ks.o", "Opacity"},
                                                {"ks.sk", "Skew"},
                                                {"ks.sa", "Skew Axis"},
                                                {"tm", "Time Remap"}}};

constexpr std::array<Named, 6> kGroups = {{{"shapes", "Contents"},
                                           {"ef", "Effects"},
                                           {"masksProperties", "Masks"},
                                           {"t", "Text"},
                                           {"sy", "Layer Styles"},
                                           {"ks", "Transform"}}};

constexpr std::array<std::string_view, 18> kBlendModes = {
    "Normal",      "Multiply",   "Screen",     "Overlay",    "Darken",     "Lighten",
    "Color Dodge", "Color Burn", "Hard Light", "Soft Light", "Difference", "Exclusion",
    "Hue",         "Saturation", "Color",      "Luminosity", "Add",        "Hard Mix"};

}  // namespace

std::string layers_named(const std::string& first, std::size_t count) {
    if (count <= 1) return "layer " + quoted(first);
    return "layers " + quoted(first) + " and " + std::to_string(count - 1) + " more";
}

std::string in_number(std::size_t count, const char* one, const char* several) {
    return count > 1 ? several : one;
}

std::string plain(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", number);
    std::string result = text;
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.') result.pop_back();
    return result == "-0" ? "0" : result;
}

std::string timeline_frame(double frame) {
    return plain(std::floor(frame + kWhole));
}

std::string property_name(const std::string& path) {
    for (const auto& [file_name, panel_name] : kProperties) {
        if (path == file_name) return std::string(panel_name);
    }
    const std::string_view group = std::string_view(path).substr(0, path.find_first_of(".["));
    for (const auto& [file_name, panel_name] : kGroups) {
        if (group == file_name) return std::string(panel_name);
    }
    return printable(path);
}

std::string blend_mode_name(int number) {
    const auto index = static_cast<std::size_t>(number);
    return index < kBlendModes.size() ? std::string(kBlendModes[index]) : "number " + std::to_string(number);
}

}  // namespace lottie::looks
