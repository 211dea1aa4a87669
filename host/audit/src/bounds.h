// How far a layer's picture reaches, as a rectangle that surely holds it.
#pragma once

#include <map>
#include <optional>

#include "placement.h"
#include "scene.h"

namespace host::audit {

struct Box {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    bool is_empty() const { return right <= left || bottom <= top; }
};

Box united(const Box& a, const Box& b);  // an empty box adds nothing
Box cut(const Box& a, const Box& b);
Box grown(const Box& box, double by);
// The upright box around the mapped one.
Box mapped(const Box& box, const Matrix& matrix);

class Extents {
  public:
    explicit Extents(const Scene& scene) : scene_(scene) {}

    // In the layer's own coordinates, transform left aside, masks taken into account; of a nest, what its layers reach
    // of its frame. Texts are estimated from their size. Null when the layer draws nothing at that frame.
    std::optional<Box> of(const SceneLayer& layer, double frame) { return of(layer, frame, 0); }

    // In the coordinates of the stack that it is in, parents and a matte taken into account; null when it draws
    // nothing, is off or transparent.
    std::optional<Box> in_stack(const Stack& stack, std::size_t layer, double frame) {
        return in_stack(stack, layer, frame, 0);
    }

    Placement& placement(const Stack& stack);

  private:
    std::optional<Box> of(const SceneLayer& layer, double frame, int depth);
    std::optional<Box> in_stack(const Stack& stack, std::size_t layer, double frame, int depth);
    std::optional<Box> of_nest(const SceneLayer& nest, double frame, int depth);

    const Scene& scene_;
    std::map<const Stack*, Placement> placements_;
};

}  // namespace host::audit
