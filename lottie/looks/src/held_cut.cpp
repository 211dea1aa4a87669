// Whether masks that the layers out of a nest got cut them as the nest's masks and frame did.
#include "held_cut.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

#include "effects.h"
#include "shape_content.h"

namespace lottie::looks {
namespace {

constexpr double kSameDegree = 1e-9;

std::string mode_of(const Json& mask) {
    return text_member(mask, "mode");
}

bool is_always(const Property& property, double value) {
    return !property.is_animated() && !property.has_expression() && std::abs(property.at(0)[0] - value) < kSameDegree;
}

// Whether it is a path and nothing else.
bool is_plain(const Json& mask) {
    const Json* path = member(mask, "pt");
    return path != nullptr && !is_truthy(mask, "inv") && is_always(Property(member(mask, "x"), {}), 0) &&
           member(*path, "x") == nullptr;
}

bool has_hard_edge(const Json& mask) {
    const Property feather(member(mask, "f"), {});
    return is_always(Property(member(mask, "o"), {100, 0, 0}), 100) && is_always(feather, 0) && feather.at(0)[1] == 0;
}

// One of the nest's masks, or its frame, in the way in which a layer has to be cut by it.
struct Cutter {
    const Json* mask;  // null for the frame
    std::string mode;
};
using Cutters = std::vector<Cutter>;

// What has to stand behind the layer's own masks. Nothing if a list of masks cannot say it.
std::optional<Cutters> cutters_for(const std::vector<const Json*>& masks, bool has_own, bool with_frame) {
    Cutters cutters;
    for (const Json* mask : masks) cutters.push_back({mask, mode_of(*mask)});
    const auto adds = std::count_if(masks.begin(), masks.end(), [](const Json* mask) { return mode_of(*mask) == "a"; });
    const bool begins_adding = !cutters.empty() && cutters[0].mode == "a";
    if (has_own ? adds > (begins_adding ? 1 : 0) : adds > 0 && !begins_adding) return std::nullopt;
    if (begins_adding) {
        if (has_own) cutters[0].mode = "i";
        if (with_frame) cutters.push_back({nullptr, "i"});
    } else if (with_frame || (!cutters.empty() && !has_own)) {
        cutters.insert(cutters.begin(), {nullptr, has_own ? "i" : "a"});
    }
    return cutters;
}

class HeldCutFinder {
  public:
    explicit HeldCutFinder(Unnesting& u) : u_(u) {
        const double w = u.nest().width;
        const double h = u.nest().height;
        rapidjson::Value vertices(rapidjson::kArrayType);
        auto& pool = frame_json_.GetAllocator();
        for (const Point corner : {Point{0, 0}, Point{w, 0}, Point{w, h}, Point{0, h}}) {
            rapidjson::Value point(rapidjson::kArrayType);
            point.PushBack(corner.x, pool).PushBack(corner.y, pool);
            vertices.PushBack(point, pool);
        }
        rapidjson::Value path(rapidjson::kObjectType);
        path.AddMember("v", vertices, pool).AddMember("c", true, pool);
        frame_json_.SetObject().AddMember("k", path, pool);
        if (!u.nest().has_masks) return;
        for (const Json& mask : u.nest().array("masksProperties")) {
            if (mode_of(mask) != "n") masks_.push_back(&mask);
        }
    }

    HeldCut find() {
        HeldCut held;
        held.frame.resize(u_.inside().size());
        held.masks = !masks_.empty() && can_be_held();
        if (u_.nest_frames().empty()) return held;
        for (const Copy& drawn : u_.copies()) {
            if (!u_.inner(drawn).draws()) continue;
            const Copy* copy = carrier_of_cut(drawn);
            const bool is_cut = copy != nullptr && is_cut_further(*copy);
            const bool is_like_nest = is_cut && holds(*copy, false);
            const bool is_like_both = is_cut && !is_like_nest && holds(*copy, true);
            held.frame[drawn.inner] = is_like_both;
            held.masks = held.masks && (is_like_nest || is_like_both);
            const bool is_cut_otherwise = is_cut ? !is_like_nest && !is_like_both : is_cut_further(drawn);
            if (is_cut_otherwise && !held.cuts_otherwise) held.cuts_otherwise = drawn.inner;
        }
        return held;
    }

  private:
    static Json::ConstArray own_masks(const SceneLayer& layer) {
        return layer.has_masks ? layer.array("masksProperties") : elements(nullptr);
    }

    bool is_cut_further(const Copy& copy) const {
        return own_masks(u_.copied(copy)).Size() > own_masks(u_.inner(copy)).Size();
    }

    // Of a layer with an alpha matte the matte has to be cut, which comes to the same: some players do not draw a layer
    // with both a matte and a mask. Null for other mattes.
    const Copy* carrier_of_cut(const Copy& drawn) const {
        const auto matte = u_.inside().matte(drawn.inner);
        if (!matte) return &drawn;
        if (u_.inner(drawn).matte_mode != 1) return nullptr;
        const auto found = std::find_if(u_.copies().begin(), u_.copies().end(),
                                        [&](const Copy& copy) { return copy.inner == *matte; });
        return found == u_.copies().end() || u_.inside().matte(*matte) ? nullptr : &*found;
    }

    bool can_be_held() const {
        const bool are_plain = std::all_of(masks_.begin(), masks_.end(), [](const Json* mask) {
            const std::string mode = mode_of(*mask);
            return is_plain(*mask) && (mode == "a" || mode == "s" || mode == "i");
        });
        if (!are_plain || (!masks_.empty() && mode_of(*masks_[0]) == "i")) return false;
        if (std::all_of(masks_.begin(), masks_.end(), [](const Json* mask) { return has_hard_edge(*mask); }))
            return true;
        // What shows through a soft edge adds up where layers lie over one another.
        return u_.inside().size() == 1;
    }

    bool holds(const Copy& copy, bool with_frame) {
        const SceneLayer& inner = u_.inner(copy);
        if (!can_be_held() || is_picture_changed(inner) || !u_.inside_survey().is_told_by_place(copy.inner))
            return false;
        const auto own = own_masks(inner);
        const auto now = own_masks(u_.copied(copy));
        const bool has_own = std::any_of(own.begin(), own.end(), [](const Json& mask) { return mode_of(mask) != "n"; });
        const auto cutters = cutters_for(masks_, has_own, with_frame);
        if (!cutters || own.Size() + cutters->size() != now.Size() || !is_begun(copy, own, *cutters)) return false;
        for (std::size_t i = 0; i < cutters->size(); ++i) {
            const Json& mask = now[own.Size() + static_cast<rapidjson::SizeType>(i)];
            if (mode_of(mask) != (*cutters)[i].mode || !is_plain(mask) ||
                !is_as_soft(mask, (*cutters)[i].mask, has_own) || !lies_the_same(copy, mask, (*cutters)[i].mask)) {
                return false;
            }
        }
        return true;
    }

    // Where masks so far leave nothing of a layer in the picture, some players take the next one for the first. So
    // what comes before the last one must leave something at every frame, unless it is the nest's own list.
    bool is_begun(const Copy& copy, Json::ConstArray own, const Cutters& cutters) {
        const bool has_own = !own.Empty();
        const bool is_nests_list = !has_own && cutters[0].mask != nullptr && cutters.back().mask != nullptr;
        const std::size_t steps = cutters.size() + (has_own ? 1 : 0);
        if (is_nests_list || steps < 2) return true;
        if (steps > 2 || !u_.stack().id.empty()) return false;
        std::vector<PathProperty> paths;
        for (const Json& mask : own) {
            if (mode_of(mask) != "a" || !is_plain(mask)) return false;
            paths.emplace_back(member(mask, "pt"));
        }
        if (!has_own) paths.emplace_back(member(own_masks(u_.copied(copy))[0], "pt"));
        return std::all_of(u_.nest_frames().begin(), u_.nest_frames().end(), [&](double frame) {
            if (!u_.copied(copy).is_on(frame)) return true;
            return std::any_of(paths.begin(), paths.end(),
                               [&](const PathProperty& path) { return is_in_view(copy, path.at(frame), frame); });
        });
    }

    // Some of what is within the outline for certain.
    bool is_in_view(const Copy& copy, const Outline& outline, double frame) {
        constexpr double kEdge = 2;  // pixels
        const Matrix& place = u_.result_placement().world(copy.result, frame);
        const bool reaches_in = std::any_of(outline.points.begin(), outline.points.end(), [&](Point point) {
            const Point p = place.map(point);
            return p.x > kEdge && p.y > kEdge && p.x < u_.stack().width - kEdge && p.y < u_.stack().height - kEdge;
        });
        return reaches_in && area(mapped(hull_of(outline.points), place)) > kEdge * kEdge;
    }

    static bool is_as_soft(const Json& now, const Json* before, bool has_own) {
        if (before == nullptr || has_hard_edge(*before)) return has_hard_edge(now);
        const auto same = [&](const char* name) {
            const Json* a = member(now, name);
            const Json* b = member(*before, name);
            return a == nullptr || b == nullptr ? a == b : *a == *b;
        };
        return !has_own && same("o") && same("f");
    }

    bool lies_the_same(const Copy& copy, const Json& mask, const Json* before) {
        const PathProperty path(member(mask, "pt"));
        const PathProperty path_before(before == nullptr ? &frame_json_ : member(*before, "pt"));
        const bool stands_still = !path.is_animated() && !path_before.is_animated() &&
                                  !u_.result_placement().moves(copy.result) &&
                                  !u_.stack_placement().moves(u_.nest_place());
        for (const double frame : u_.nest_frames()) {
            if (!u_.copied(copy).is_on(frame) || u_.copied(copy).transform().opacity.at(frame)[0] <= 0) continue;
            const Outline now = path.at(frame);
            const Outline was = path_before.at(frame);
            if (now.points.size() != was.points.size()) return false;
            const Matrix place = u_.result_placement().world(copy.result, frame);
            const Matrix& nest = u_.stack_placement().world(u_.nest_place(), frame);
            for (std::size_t i = 0; i < now.points.size(); ++i) {
                const Point p = place.map(now.points[i]);
                const Point q = nest.map(was.points[i]);
                if (!(std::hypot(p.x - q.x, p.y - q.y) <= kUnseen)) return false;
            }
            if (stands_still) break;
        }
        return true;
    }

    Unnesting& u_;
    rapidjson::Document frame_json_;
    std::vector<const Json*> masks_;
};

}  // namespace

HeldCut find_held_cut(Unnesting& u) {
    return HeldCutFinder(u).find();
}

}  // namespace lottie::looks
