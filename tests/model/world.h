// Where a layer really is, computed from its streams independently of the model.
#pragma once

#include <array>

#include "model/comp.h"

namespace host::model::testing {

using Point3 = std::array<double, 3>;

// The composition's place of a point of the layer at the composition's current time: through the layer's anchor, scale,
// rotations and position and those of all above it. A layer that is 2D uses nothing of the third dimension.
Point3 place(Layer& layer, Point3 point);

// The biggest distance between where the layer's corner points are now and where they were.
class PlaceWatch {
  public:
    explicit PlaceWatch(Layer& layer) : layer_(layer), before_(corners()) {}
    double moved() const;

  private:
    static constexpr int kCorners = 4;
    std::array<Point3, kCorners> corners() const;

    Layer& layer_;
    std::array<Point3, kCorners> before_;
};

}  // namespace host::model::testing
