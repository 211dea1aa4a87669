// Whether pictures lie so far apart that some players do not draw them as sharply together as alone.
#include "scatter.h"

namespace lottie::looks {
namespace {

// Square pixels of the nest by which the box around two pictures may be larger than their own two: half of what
// browsers bear, as they count some more to a picture than it reaches.
constexpr double kMostGap = 5000;

constexpr std::size_t kManyPaints = 1000;  // of what nobody counts

// Fills and strokes of a layer.
std::size_t count_paints(Json::ConstArray shapes) {
    std::size_t count = 0;
    for (const Json& shape : shapes) {
        const std::string type = text_member(shape, "ty");
        if (type == "gr") count += count_paints(array_member(shape, "it"));
        if (type == "rp") count += 2;
        if (type == "fl" || type == "st" || type == "gf" || type == "gs") ++count;
    }
    return count;
}

double area_of(const Box& box) {
    return box.left > box.right ? 0 : (box.right - box.left) * (box.bottom - box.top);
}

}  // namespace

std::size_t paint_count(const SceneLayer& layer) {
    switch (layer.type) {
        case LayerType::solid:
        case LayerType::image:
        case LayerType::text:  // players that fade texts letter by letter draw none over another
            return 1;
        case LayerType::shape:
            return count_paints(layer.array("shapes"));
        default:
            return kManyPaints;
    }
}

bool is_one_picture(const SceneLayer& layer) {
    return paint_count(layer) <= 1;
}

bool is_scattered(Unnesting& u, double inner_frame) {
    Survey& inside = u.inside_survey();
    u.comparison().spend(u.inside().size());
    Box all = kNoBox;
    bool has_gaps = false;
    std::size_t pictures = 0;
    for (std::size_t inner = u.inside().size(); inner-- > 0;) {  // in the order in which they are painted
        const SceneLayer& layer = u.inside().layer(inner);
        if (!layer.draws() || !layer.is_on(inner_frame)) continue;
        const Hull& reach = inside.reach(inner, inner_frame);
        if (area(reach) <= 0) continue;
        const Box box = around(mapped(reach, inside.placement().world(inner, inner_frame)));
        const Box more = united(all, box);
        const double gap = is_one_picture(layer) ? area_of(more) - area_of(all) - area_of(box) : area_of(more);
        has_gaps = has_gaps || gap > kMostGap;
        ++pictures;
        all = more;
    }
    return has_gaps && pictures > 1;
}

}  // namespace lottie::looks
