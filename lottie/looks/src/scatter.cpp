// Whether pictures lie so far apart that some players do not draw them as sharply together as alone.
#include "scatter.h"

namespace lottie::looks {
namespace {

// Square pixels of the nest by which the box around two pictures may be larger than their own two: half of what
// browsers bear, as they count some more to a picture than it reaches.
constexpr double kMostGap = 5000;

double area_of(const Box& box) {
    return box.left > box.right ? 0 : (box.right - box.left) * (box.bottom - box.top);
}

}  // namespace

bool is_scattered(Unnesting& u, double inner_frame) {
    Survey& inside = u.inside_survey();
    u.comparison().spend(u.inside().size());
    Box all = kNoBox;
    for (std::size_t inner = u.inside().size(); inner-- > 0;) {  // in the order in which they are painted
        const SceneLayer& layer = u.inside().layer(inner);
        if (!layer.draws() || !layer.is_on(inner_frame)) continue;
        const Hull& reach = inside.reach(inner, inner_frame);
        if (area(reach) <= 0) continue;
        const Box box = around(mapped(reach, inside.placement().world(inner, inner_frame)));
        const Box more = united(all, box);
        if (area_of(more) - area_of(all) - area_of(box) > kMostGap) return true;
        all = more;
    }
    return false;
}

}  // namespace lottie::looks
