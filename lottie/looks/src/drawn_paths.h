// The paths among a layer's shapes, as expressions read them: without the transforms of the groups around them.
#pragma once

#include <vector>

#include "looks/work.h"
#include "path.h"

namespace lottie::looks {

class DrawnPaths {
  public:
    explicit DrawnPaths(Json::ConstArray shapes);  // must outlive it

    bool is_any_expressed() const { return is_any_expressed_; }
    bool is_any_animated() const;
    // Around all vertices and handles; kNoBox if there are none.
    Box around(double frame, Work& work) const;

  private:
    void find(Json::ConstArray items);

    std::vector<PathProperty> paths_;
    bool is_any_expressed_ = false;
};

}  // namespace lottie::looks
