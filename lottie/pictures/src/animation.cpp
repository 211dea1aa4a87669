// rlottie behind our own interface.
#include "pictures/animation.h"

#include <rlottie.h>

#include <stdexcept>
#include <utility>

namespace lottie::pictures {

struct Animation::Impl {
    std::unique_ptr<rlottie::Animation> animation;
    int width = 0;
    int height = 0;
};

Animation::Animation(const std::string& json) : impl_(std::make_unique<Impl>()) {
    // The renderer caches by key; an empty policy keeps two files from being taken for one.
    impl_->animation = rlottie::Animation::loadFromData(json, "", "", false);
    if (!impl_->animation) throw std::runtime_error("the renderer does not accept this animation");
    std::size_t width = 0;
    std::size_t height = 0;
    impl_->animation->size(width, height);
    impl_->width = static_cast<int>(width);
    impl_->height = static_cast<int>(height);
}

Animation::~Animation() = default;
Animation::Animation(Animation&&) noexcept = default;

int Animation::frame_count() const {
    return static_cast<int>(impl_->animation->totalFrame());
}
int Animation::width() const {
    return impl_->width;
}
int Animation::height() const {
    return impl_->height;
}

Picture Animation::frame(int index, int width, int height) const {
    Picture picture(width, height);
    const auto w = static_cast<std::size_t>(width);
    rlottie::Surface surface(picture.pixels.data(), w, static_cast<std::size_t>(height), w * sizeof(std::uint32_t));
    impl_->animation->renderSync(static_cast<std::size_t>(index), surface, false);
    return picture;
}

}  // namespace lottie::pictures
