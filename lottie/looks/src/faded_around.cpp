// Compositions that a faded nest shows and that become a group, or cease to be one: some players draw what fades by way
// of a picture of its own only where it holds several layers, and that moves the last bit of all that is below.
#include <algorithm>
#include <set>

#include "findings.h"

namespace lottie::looks {
namespace {

bool is_faded(const SceneLayer& nest) {
    const Property& opacity = nest.transform().opacity;
    const auto values = opacity.key_values();
    return opacity.has_expression() ||
           std::any_of(values.begin(), values.end(), [](const Values& value) { return value[0] < 100; });
}

class FadedAround {
  public:
    explicit FadedAround(Unnesting& u) : u_(u) {}

    // Whether something faded shows the composition while its only nest is off.
    bool find() { return find(u_.stack().id, true); }

  private:
    bool find(const std::string& id, bool only_while_empty) {
        if (id.empty() || !met_.insert(id).second) return false;
        for (const auto& [around_id, around] : u_.comparison().before().stacks) {
            u_.comparison().spend(around->size());
            for (std::size_t i = 0; i < around->size(); ++i) {
                const SceneLayer& layer = around->layer(i);
                if (layer.type != LayerType::nest || layer.source != id) continue;
                if (only_while_empty && !is_ever_empty(layer)) continue;
                if (is_faded(layer)) return true;
                // What is no group itself hands the opacity on that it is drawn with.
                if (around->size() == 1 && find(around_id, false)) return true;
            }
        }
        return false;
    }

    bool is_ever_empty(const SceneLayer& around) const {
        const SceneLayer& nest = u_.nest();
        if (u_.inside().size() < 2 || nest.transform().opacity.is_animated() || around.time_remap()) return true;
        return nest.in > around.inner_frame(around.in, 0) || nest.out < around.inner_frame(around.out, 0);
    }

    Unnesting& u_;
    std::set<std::string> met_;
};

}  // namespace

void find_fading_around(Unnesting& u) {
    if (u.stack().size() > 1 || u.result().size() <= 1 || u.stack().id.empty() || !FadedAround(u).find()) return;
    u.add(
        {Reason::opacity,
         Weight::change,
         "its composition is shown faded, and with more than one layer some players round all that is below otherwise",
         "un-nest the composition around it first, or keep this nest",
         "",
         "ks.o",
         {}});
}

}  // namespace lottie::looks
