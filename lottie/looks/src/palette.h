// The colors that an animation shows.
#pragma once

#include <set>
#include <vector>

#include "property.h"
#include "scene.h"

namespace lottie::looks {

// How far two colors are apart at most, 1 being from black to white.
struct Contrast {
    double most = 1;  // in one of the channels
    double mean = 1;  // of all
    double luma = 1;  // in brightness
};

// The larger one in each respect.
Contrast larger(const Contrast& a, const Contrast& b);

// Plain colors, and those of gradients. What is drawn in any other way, such as images, may have every color.
class Palette {
  public:
    // Of all layers of a scene, and the white of an empty page.
    static Palette of(const Scene& scene);

    void add(const SceneLayer& layer);  // a nest adds nothing
    void add_white() { colors_.insert({1, 1, 1}); }
    void add(const Palette& other);

    // Of a layer of one color to any of them.
    Contrast contrast_to(const SceneLayer& layer) const;
    // Of any color there.
    Contrast contrast_to(const Palette& other) const;

  private:
    Contrast contrast_to(const std::vector<Values>& colors) const;
    bool has_taken(const SceneLayer& layer);
    bool add_paints(Json::ConstArray shapes);

    bool is_all_known_ = true;
    std::set<Values> colors_;  // rounded
};

}  // namespace lottie::looks
