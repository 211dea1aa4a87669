// The paths among a layer's shapes, as expressions read them: without the transforms of the groups around them.
#include "drawn_paths.h"

#include <algorithm>

namespace lottie::looks {
namespace {

constexpr std::size_t kStepsPerPath = 10;

}  // namespace

DrawnPaths::DrawnPaths(Json::ConstArray shapes) {
    find(shapes);
}

void DrawnPaths::find(Json::ConstArray items) {
    for (const Json& item : items) {
        const std::string kind = text_member(item, "ty");
        if (kind == "gr") find(array_member(item, "it"));
        if (kind != "sh") continue;
        const Json* path = member(item, "ks");
        const Json* expression = path == nullptr ? nullptr : member(*path, "x");
        is_any_expressed_ = is_any_expressed_ || (expression != nullptr && expression->IsString());
        paths_.emplace_back(path);
    }
}

bool DrawnPaths::is_any_animated() const {
    return std::any_of(paths_.begin(), paths_.end(), [](const PathProperty& path) { return path.is_animated(); });
}

Box DrawnPaths::around(double frame, Work& work) const {
    Box box = kNoBox;
    for (const PathProperty& path : paths_) work.spend(kStepsPerPath + path.take_into(box, frame));
    return box;
}

}  // namespace lottie::looks
