// An animation as players see it, read for judging looks.
#include "looks/animation.h"

#include "scene.h"

namespace lottie::looks {

Animation::Animation(std::string_view text) : scene_(std::make_unique<Scene>(text)) {}
Animation::~Animation() = default;
Animation::Animation(Animation&&) noexcept = default;
Animation& Animation::operator=(Animation&&) noexcept = default;

std::size_t Animation::byte_count() const {
    return scene_->byte_count;
}

}  // namespace lottie::looks
