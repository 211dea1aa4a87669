// Pictures where there is no renderer: every wish is refused in one sentence.
#include <stdexcept>

#include "pictures/animation.h"
#include "pictures/comparison.h"
#include "pictures/drawing_process.h"
#include "pictures/picture.h"

namespace lottie::pictures {
namespace {

[[noreturn]] void refuse() {
    throw std::runtime_error("exflate as WebAssembly draws none; the native command does");
}

}  // namespace

Picture::Picture(int w, int h, std::uint32_t /*color*/) : width(w), height(h) {}

Picture over_white(const Picture& /*picture*/) {
    refuse();
}

std::string png(const Picture& /*picture*/) {
    refuse();
}

Picture difference_picture(const Picture& /*a*/, const Picture& /*b*/, int /*gain*/) {
    refuse();
}

PictureComparison compare_in_child(const std::string& /*before*/, const std::string& /*after*/,
                                   const std::vector<int>& /*look_at*/, DrawingBudget& /*budget*/) {
    refuse();
}

}  // namespace lottie::pictures
