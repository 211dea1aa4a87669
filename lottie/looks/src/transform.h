// The transform of a layer over time.
#pragma once

#include "matrix.h"
#include "property.h"

namespace lottie::looks {

class Transform {
  public:
    // `ks` is the file's object; anything else leaves all at the defaults.
    Transform(const Json& ks, bool is_3d, bool is_auto_oriented);

    // The layer's own matrix. Separate from its parents'.
    Matrix at(double frame) const { return at(frame, frame); }
    // The same with what has an expression as it is at another frame.
    Matrix at(double frame, double led) const;
    bool is_animated() const { return is_animated_; }  // opacity left aside
    // Whether the matrix is the same at both frames, as far as that can be told at a glance.
    bool stands_still_between(double a, double b) const;
    bool has_expression() const;
    // Whether it leaves the plane at any time.
    bool is_spatial() const { return is_spatial_; }

    Property anchor, position, scale, rotation, turn_x, turn_y, orientation, opacity;
    bool is_3d = false;
    bool is_auto_oriented = false;

  private:
    bool is_animated_ = false;
    bool is_spatial_ = false;
};

}  // namespace lottie::looks
