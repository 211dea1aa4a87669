// An animation as players see it, read for judging looks.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace lottie::looks {

struct Scene;

// Reads the text by itself, not through the project that made it: the judge shall not share the reader's errors.
class Animation {
  public:
    // `text` must be an animation that has been read or written as a project before; anything else throws
    // std::runtime_error. The text is not needed afterwards.
    explicit Animation(std::string_view text);
    ~Animation();
    Animation(Animation&&) noexcept;
    Animation& operator=(Animation&&) noexcept;

    std::size_t byte_count() const;
    const Scene& scene() const { return *scene_; }  // for this room only: the type is not public

  private:
    std::unique_ptr<Scene> scene_;
};

}  // namespace lottie::looks
