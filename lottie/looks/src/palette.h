// The colors that an animation shows.
#pragma once

#include <set>

#include "property.h"
#include "scene.h"

namespace lottie::looks {

// How far two colors are apart at most, 1 being from black to white.
struct Contrast {
    double most = 1;  // in one of the channels
    double mean = 1;  // of all
};

// The plain colors of all layers, and the white of an empty page. What is drawn in any other way, such as images, may
// have every color.
class Palette {
  public:
    explicit Palette(const Scene& scene);

    // Of a layer of one color to anything that the animation may show next to it.
    Contrast contrast_to(const SceneLayer& layer) const;

  private:
    bool add(const SceneLayer& layer);
    bool add_paints(Json::ConstArray shapes);

    bool is_all_known_ = true;
    std::set<Values> colors_;  // rounded
};

}  // namespace lottie::looks
