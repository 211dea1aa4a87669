// Frames of a Lottie animation, drawn by rlottie.
#pragma once

#include <memory>
#include <string>

#include "pictures/picture.h"

namespace lottie::pictures {

// Draws geometry, order, trimming, parenting and neighbouring mattes; knows no expressions, effects, text or blend
// modes. The same frame of the same file is the same picture, bit for bit.
class Animation {
  public:
    // Throws std::runtime_error with one sentence when the renderer refuses the file.
    explicit Animation(const std::string& json);
    ~Animation();
    Animation(Animation&&) noexcept;

    int frame_count() const;
    int width() const;  // of the composition, pixels
    int height() const;

    // Frame `index` counted from the start of the work area, scaled to the given size, not yet over any background.
    Picture frame(int index, int width, int height) const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace lottie::pictures
