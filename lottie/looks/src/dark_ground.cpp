// Large plain areas that lack red, green or blue.
#include "dark_ground.h"

#include <algorithm>

#include "one_outline.h"
#include "paint.h"

namespace lottie::looks {
namespace {

constexpr double kMostBlack = 0.005;  // of the picture: likeness is told by brightness, which steps from 0 to 1 here
constexpr double kMostLacking = 0.05;
constexpr double kDark = 1.0 / 255;
constexpr std::size_t kStepsPerLayer = 4;

// How many of red, green and blue all colors lack.
std::size_t count_lacking(const std::vector<Values>& colors) {
    std::size_t count = 0;
    for (std::size_t part = 0; part < 3; ++part) {
        count += !colors.empty() &&
                 std::all_of(colors.begin(), colors.end(), [part](const Values& color) { return color[part] < kDark; });
    }
    return count;
}

// How many of red, green and blue the only fill of a layer lacks where it begins.
std::size_t count_lacking(const SceneLayer& layer) {
    std::size_t count = 0;
    if (layer.type == LayerType::solid) {
        for (std::size_t at = 1; at < 7 && at < layer.color.size(); at += 2)
            count += layer.color.compare(at, 2, "00") == 0;
        return count;
    }
    const Json& fill = *first_paint(layer.array("shapes"));
    if (member(fill, "g") != nullptr) return count_lacking(colors_of(fill));
    return count_lacking({Property(member(fill, "c"), {1, 1, 1}).at(layer.in)});
}

// Of each layer, where it begins; at most 1 where nobody sees it.
std::vector<double> darkness_of_layers(Survey& survey) {
    const Stack& stack = survey.stack();
    const Hull view = hull_of(Box{0, 0, stack.width, stack.height});
    std::vector<double> darkness(stack.size());
    for (std::size_t place = 0; place < darkness.size(); ++place) {
        const SceneLayer& layer = stack.layer(place);
        const std::size_t lacking = layer.draws() && one_outline(layer) ? count_lacking(layer) : 0;
        if (lacking == 0) continue;
        const Hull& reach = survey.reach_in_stack(place, std::max(layer.in, stack.first_frame));
        const double share = area(cut(reach, view)) / (stack.width * stack.height);
        darkness[place] = lacking == 3 ? share / kMostBlack : share / kMostLacking * static_cast<double>(lacking);
    }
    return darkness;
}

}  // namespace

bool is_black(const SceneLayer& layer) {
    return !outlines_at_any_opacity(layer).empty() && count_lacking(layer) == 3;
}

bool is_ground_dark(Unnesting& u) {
    Surveys& surveys = u.comparison().surveys();
    const Stack& main = surveys.scene().main();
    return std::any_of(surveys.scene().stacks.begin(), surveys.scene().stacks.end(), [&](const auto& entry) {
        Survey* survey = entry.first == u.inside().id ? nullptr : surveys.find(entry.first);
        if (survey == nullptr) return false;
        std::optional<std::vector<double>>& darkness = survey->darkness;
        u.comparison().spend(kStepsPerLayer * survey->stack().size());
        if (!darkness) darkness = darkness_of_layers(*survey);
        const double size = survey->stack().width * survey->stack().height / (main.width * main.height);
        const bool is_around = entry.first == u.stack().id;
        const auto below = static_cast<std::ptrdiff_t>(is_around ? u.nest_place() + 1 : 0);
        return std::any_of(darkness->begin() + below, darkness->end(),
                           [size](double one) { return one * std::min(1.0, size) > 1; });
    });
}

}  // namespace lottie::looks
