// How far a layer's picture reaches, as a convex polygon that surely holds it.
#pragma once

#include <map>

#include "hull.h"
#include "placement.h"
#include "scene.h"

namespace lottie::looks {

class Extents {
  public:
    explicit Extents(const Scene& scene) : scene_(scene) {}

    // In the layer's own coordinates, transform left aside, masks taken into account; of a nest, what its layers reach
    // of its frame. Texts are estimated from their size. Without area when the layer draws nothing at that frame.
    Hull of(const SceneLayer& layer, double frame) { return of(layer, frame, 0); }

    // In the coordinates of the stack that it is in, parents and a matte taken into account; without area when it draws
    // nothing, is off or transparent.
    Hull in_stack(const Stack& stack, std::size_t layer, double frame) { return in_stack(stack, layer, frame, 0); }

    Placement& placement(const Stack& stack);

  private:
    Hull of(const SceneLayer& layer, double frame, int depth);
    Hull in_stack(const Stack& stack, std::size_t layer, double frame, int depth);
    Hull of_nest(const SceneLayer& nest, double frame, int depth);

    const Scene& scene_;
    std::map<const Stack*, Placement> placements_;
};

}  // namespace lottie::looks
