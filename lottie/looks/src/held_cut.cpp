// Whether masks that the layers out of a nest got cut them as the nest's masks and frame did.
#include "held_cut.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

#include "covering.h"
#include "cut_work.h"
#include "dark_ground.h"
#include "effects.h"
#include "masks.h"
#include "one_outline.h"
#include "path.h"
#include "scatter.h"

namespace lottie::looks {
namespace {

// Of the outer composition: matted colours come out up to 3 of 255 lower, which tells in what is dark.
constexpr double kLargeShare = 0.015;
constexpr double kEdge = 2;       // pixels that a player may draw more or less of
constexpr double kNoArea = 1e-9;  // that a pixel of a layer becomes
constexpr double kSameArea = 1e-6;
constexpr std::size_t kStepsPerPath = 20;  // that is evaluated at a frame
constexpr std::size_t kStepsPerPoint = 2;  // of it

// One of the nest's masks, its matte, or its frame, in the way in which a layer has to be cut by it.
struct NeededMask {
    const Json* path;
    std::string mode;
    const Json* mask = nullptr;  // if it is one
};
using NeededMasks = std::vector<NeededMask>;

// What has to stand behind the layer's own masks. Nothing if a list of masks cannot say it.
std::optional<NeededMasks> cutters_for(NeededMasks cutters, const Json* frame, bool has_own, bool with_frame) {
    const auto adds =
        std::count_if(cutters.begin(), cutters.end(), [](const NeededMask& cutter) { return cutter.mode == "a"; });
    const bool begins_adding = !cutters.empty() && cutters[0].mode == "a";
    if (has_own ? adds > (begins_adding ? 1 : 0) : adds > 0 && !begins_adding) return std::nullopt;
    if (begins_adding) {
        if (has_own) cutters[0].mode = "i";
        if (with_frame) cutters.push_back({frame, "i"});
    } else if (with_frame || (!cutters.empty() && !has_own)) {
        cutters.insert(cutters.begin(), {frame, has_own ? "i" : "a"});
    }
    return cutters;
}

// Whether the outline is as large as its hull.
bool is_convex(const Outline& outline) {
    const double of_hull = area(hull_of(outline.points));
    return std::abs(of_hull - std::abs(area(outline.points))) <= kSameArea * of_hull;
}

class HeldCutFinder {
  public:
    explicit HeldCutFinder(Unnesting& u) : u_(u) {
        const double w = u.nest().width;
        const double h = u.nest().height;
        Json vertices(rapidjson::kArrayType);
        auto& pool = frame_json_.GetAllocator();
        for (const Point corner : {Point{0, 0}, Point{w, 0}, Point{w, h}, Point{0, h}}) {
            Json point(rapidjson::kArrayType);
            point.PushBack(corner.x, pool).PushBack(corner.y, pool);
            vertices.PushBack(point, pool);
        }
        Json path(rapidjson::kObjectType);
        path.AddMember("v", vertices, pool).AddMember("c", true, pool);
        frame_json_.SetObject().AddMember("k", path, pool);
        if (u.nest().has_masks) {
            for (const Json& mask : u.nest().array("masksProperties")) {
                if (mode_of(mask) != "n") cutters_.push_back({member(mask, "pt"), mode_of(mask), &mask});
            }
        }
        if (cutters_.empty()) take_matte();
    }

    HeldCut find() {
        HeldCut held;
        held.frame.resize(u_.inside().size());
        bool is_all_cut = !cutters_.empty() && can_be_held();
        if (u_.nest_frames().empty()) return held;
        for (const Copy& drawn : u_.copies()) {
            if (!is_seen(drawn)) continue;
            if (u_.covering().holds(drawn.inner)) {
                held.frame[drawn.inner] = u_.covering().ends_at_frame(drawn.inner);
                continue;
            }
            const Copy* copy = carrier_of_cut(drawn);
            const bool is_cut = copy != nullptr && is_cut_further(*copy);
            const bool is_like_nest = is_cut && holds(*copy, false);
            const bool is_like_both = is_cut && !is_like_nest && holds(*copy, true);
            held.frame[drawn.inner] = is_like_both;
            is_all_cut = is_all_cut && (is_like_nest || is_like_both);
            const bool is_cut_otherwise = is_cut ? !is_like_nest && !is_like_both : is_cut_further(drawn);
            if (is_cut_otherwise && !held.cuts_otherwise) held.cuts_otherwise = drawn.inner;
        }
        held.is_blurred = is_all_cut && is_blurred_together();
        is_all_cut = is_all_cut && !held.is_blurred;
        held.masks = is_all_cut && !matte_;
        held.matte = is_all_cut && matte_ && is_matte_gone() && !is_rounding_seen() && !is_ground_dark(u_);
        return held;
    }

  private:
    void take_matte() {
        const auto place = u_.stack().matte(u_.nest_place());
        const int mode = u_.nest().matte_mode;
        if (!place || (mode != 1 && mode != 2) || u_.stack().matte(*place) ||
            !u_.stack_survey().has_reliable_placement(*place) ||
            !u_.stack_survey().has_reliable_placement(u_.nest_place())) {
            return;
        }
        const SceneLayer& layer = u_.stack().layer(*place);
        matte_outline_ = one_outline(layer);
        if (!matte_outline_) return;
        matte_ = *place;
        cutters_.push_back({matte_outline_->path, mode == 1 ? "a" : "s"});
    }

    // Added masks alone are drawn without a surface of the group's own.
    bool is_blurred_together() const {
        const bool is_plain_path =
            !matte_ && std::all_of(cutters_.begin(), cutters_.end(), [](const NeededMask& cutter) {
                return cutter.mode == "a" && has_hard_edge(*cutter.mask);
            });
        return !is_plain_path && u_.inside().size() > 1 &&
               std::any_of(u_.nest_frames().begin(), u_.nest_frames().end(),
                           [&](double frame) { return is_scattered(u_, u_.inner_frame(frame)); });
    }

    // What some players round otherwise with a matte than with a mask.
    bool is_rounding_seen() const {
        const double most = kLargeShare * u_.stack().width * u_.stack().height;
        return std::any_of(u_.nest_frames().begin(), u_.nest_frames().end(), [&](double frame) {
            return area(u_.stack_survey().reach_in_stack(u_.nest_place(), frame)) > most;
        });
    }

    // Not drawn itself, and no layer out of the nest is seen without it.
    bool is_matte_gone() const {
        const auto kept = u_.kept_at(*matte_);
        if (!kept) return false;
        bool has_users = u_.result().layer(*kept).is_hidden;
        for (std::size_t i = 0; i < u_.result().size(); ++i) has_users = has_users || u_.result().matte(i) == kept;
        const SceneLayer& matte = u_.stack().layer(*matte_);
        return has_users && std::all_of(u_.nest_frames().begin(), u_.nest_frames().end(), [&](double frame) {
                   if (matte.is_on(frame)) return true;
                   return u_.nest().matte_mode == 1 &&
                          std::none_of(u_.copies().begin(), u_.copies().end(), [&](const Copy& copy) {
                              return u_.copied(copy).draws() && u_.copied(copy).is_on(frame);
                          });
               });
    }

    // From the coordinates of a cutter to those of the stack.
    Matrix place_of(const NeededMask& cutter, double frame) {
        if (!matte_ || cutter.path != matte_outline_->path) return u_.stack_placement().world(u_.nest_place(), frame);
        return matte_outline_->place.then(u_.stack_placement().world(*matte_, frame));
    }

    static Json::ConstArray own_masks(const SceneLayer& layer) {
        return layer.has_masks ? layer.array("masksProperties") : elements(nullptr);
    }

    bool is_seen(const Copy& copy) const {
        const SceneLayer& copied = u_.copied(copy);
        return u_.inner(copy).draws() && copied.draws() &&
               std::any_of(u_.nest_frames().begin(), u_.nest_frames().end(),
                           [&copied](double frame) { return copied.is_on(frame); });
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
        const bool are_plain = std::all_of(cutters_.begin(), cutters_.end(), [](const NeededMask& cutter) {
            return (cutter.mask == nullptr || is_plain_mask(*cutter.mask)) &&
                   (cutter.mode == "a" || cutter.mode == "s" || cutter.mode == "i");
        });
        if (!are_plain || (!cutters_.empty() && cutters_[0].mode == "i")) return false;
        if (std::all_of(cutters_.begin(), cutters_.end(),
                        [](const NeededMask& cutter) { return cutter.mask == nullptr || has_hard_edge(*cutter.mask); }))
            return true;
        // What shows through a soft edge adds up where layers lie over one another.
        return u_.inside().size() == 1;
    }

    bool holds(const Copy& copy, bool with_frame) {
        const SceneLayer& inner = u_.inner(copy);
        if (!can_be_held() || is_picture_changed(inner) || !u_.inside_survey().has_reliable_placement(copy.inner))
            return false;
        const auto own = own_masks(inner);
        const auto now = own_masks(u_.copied(copy));
        const bool has_own = std::any_of(own.begin(), own.end(), [](const Json& mask) { return mode_of(mask) != "n"; });
        if (inner.has_masks && !has_own) return false;  // some players hide it, others show it whole
        // A single mask of the layer's own stands behind, where it cuts whatever comes before it.
        const bool is_own_last = own.Size() == 1 && (mode_of(own[0]) == "a" || mode_of(own[0]) == "f");
        const auto cutters = cutters_for(cutters_, &frame_json_, has_own && !is_own_last, with_frame);
        if (!cutters || own.Size() + cutters->size() != now.Size()) return false;
        const rapidjson::SizeType first_cutter = is_own_last ? 0 : own.Size();
        for (rapidjson::SizeType i = 0; i < cutters->size(); ++i) {
            const Json& mask = now[first_cutter + i];
            const NeededMask& cutter = (*cutters)[i];
            if (mode_of(mask) != cutter.mode || !is_plain_mask(mask) || !is_as_soft(mask, cutter.mask, has_own) ||
                !lies_the_same(copy, mask, cutter)) {
                return false;
            }
        }
        for (rapidjson::SizeType i = 0; i < own.Size(); ++i) {
            const Json& mask = now[is_own_last ? now.Size() - 1 : i];
            if (mode_of(mask) != (is_own_last ? "i" : mode_of(own[i])) || !is_own_mask(copy, own[i], mask))
                return false;
        }
        return is_begun(copy, now, is_own_last || !has_own ? 0 : own.Size(), *cutters, has_own);
    }

    Outline outline_at(const PathProperty& path, double frame) {
        Outline outline = path.at(frame);
        u_.comparison().spend(kStepsPerPath + kStepsPerPoint * outline.points.size());
        return outline;
    }

    // Whether a mask of the copy is one that the layer had.
    bool is_own_mask(const Copy& copy, const Json& before, const Json& now) {
        for (const char* name : {"inv", "o", "f", "x"}) {
            const Json* a = member(before, name);
            const Json* b = member(now, name);
            if (a == nullptr || b == nullptr ? a != b : *a != *b) return false;
        }
        const PathProperty path_before(member(before, "pt"));
        const PathProperty path(member(now, "pt"));
        const bool stands_still = !path_before.is_animated() && !path.is_animated();
        for (const double frame : u_.nest_frames()) {
            if (!u_.copied(copy).is_on(frame)) continue;
            const Outline a = outline_at(path_before, u_.inner_frame(frame));
            const Outline b = outline_at(path, frame);
            if (a.points.size() != b.points.size()) return false;
            for (std::size_t i = 0; i < a.points.size(); ++i) {
                if (!(std::hypot(a.points[i].x - b.points[i].x, a.points[i].y - b.points[i].y) <= kUnseen))
                    return false;
            }
            if (stands_still) break;
        }
        return true;
    }

    // Where masks so far leave nothing of a layer in the picture, some players take the next one for the first. So
    // what comes before the last one must leave something at every frame at which the last one does, unless it is the
    // nest's own list.
    bool is_begun(const Copy& copy, Json::ConstArray masks, rapidjson::SizeType own, const NeededMasks& cutters,
                  bool has_own) {
        const bool is_nests_list = cutters[0].path != &frame_json_ && cutters.back().path != &frame_json_;
        if (!has_own && (is_nests_list || masks.Size() < 2)) return true;
        if ((own > 0 && cutters.size() > 1) || !u_.stack().id.empty()) return false;
        std::vector<FirstMask> first;
        for (rapidjson::SizeType i = 0; i < (own > 0 ? own : masks.Size() - 1); ++i) {
            first.push_back({PathProperty(member(masks[i], "pt")), mode_of(masks[i])});
            if (!is_plain_mask(masks[i])) return false;
        }
        return std::all_of(u_.nest_frames().begin(), u_.nest_frames().end(), [&](double frame) {
            return !u_.copied(copy).is_on(frame) || leaves_some(copy, first, frame) ||
                   (own == 0 && is_out_of_view(copy, frame));
        });
    }

    struct FirstMask {
        PathProperty path;
        std::string mode;
    };

    // Whether masks leave some of what is in view for certain.
    bool leaves_some(const Copy& copy, const std::vector<FirstMask>& masks, double frame) {
        const bool are_known = std::all_of(masks.begin(), masks.end(), [](const FirstMask& mask) {
            return mask.mode == "a" || mask.mode == "s" || mask.mode == "f";
        });
        if (!are_known) return false;
        return std::any_of(masks.begin(), masks.end(),
                           [&](const FirstMask& mask) { return leaves_all_of(copy, mask, masks, frame); }) ||
               leaves_more_than_is_taken(copy, masks, frame);
    }

    // Whether the mask adds something in view that no other mask takes away.
    bool leaves_all_of(const Copy& copy, const FirstMask& added, const std::vector<FirstMask>& masks, double frame) {
        const bool is_difference = added.mode == "f";
        const Outline outline = outline_at(added.path, frame);
        if ((added.mode != "a" && !is_difference) || !is_in_view(copy, outline, frame)) return false;
        const Hull hull = hull_of(outline.points);
        return std::all_of(masks.begin(), masks.end(), [&](const FirstMask& mask) {
            if (&mask == &added || (mask.mode == "a" && !is_difference)) return true;
            const Hull other = hull_of(outline_at(mask.path, frame).points);
            u_.comparison().spend(steps_to_cut(hull, other));
            return area(cut(hull, other)) <= 0;
        });
    }

    bool leaves_more_than_is_taken(const Copy& copy, const std::vector<FirstMask>& masks, double frame) {
        const Outline first = outline_at(masks[0].path, frame);
        const bool only_takes_away =
            std::all_of(masks.begin() + 1, masks.end(), [](const FirstMask& mask) { return mask.mode == "s"; });
        if (masks[0].mode != "a" || !only_takes_away || !is_convex(first)) return false;
        double left = area_in_view(copy, first, frame);
        for (auto mask = masks.begin() + 1; mask != masks.end(); ++mask)
            left -= area_in_view(copy, outline_at(mask->path, frame), frame);
        return left > kEdge * u_.stack().width;
    }

    // Of the outline's hull.
    double area_in_view(const Copy& copy, const Outline& outline, double frame) {
        return area(cut(mapped(hull_of(outline.points), u_.result_placement().world(copy.result, frame)), view()));
    }

    // Whether the layer draws nothing in the picture, by its own masks.
    bool is_out_of_view(const Copy& copy, double frame) {
        const Hull& reach = u_.inside_survey().reach(copy.inner, u_.inner_frame(frame));
        return area(cut(mapped(reach, u_.result_placement().world(copy.result, frame)), view())) <= 0;
    }

    Hull view() const { return hull_of(Box{0, 0, u_.stack().width, u_.stack().height}); }

    // Some of what is within the outline for certain: a point of it, or the whole picture lies within.
    bool is_in_view(const Copy& copy, const Outline& outline, double frame) {
        const Matrix& place = u_.result_placement().world(copy.result, frame);
        const Hull hull = mapped(hull_of(outline.points), place);
        if (area(hull) <= kEdge * kEdge) return false;
        const double width = u_.stack().width;
        const double height = u_.stack().height;
        const bool reaches_in = std::any_of(outline.points.begin(), outline.points.end(), [&](Point point) {
            const Point p = place.map(point);
            return p.x > kEdge && p.y > kEdge && p.x < width - kEdge && p.y < height - kEdge;
        });
        if (reaches_in) return true;
        return is_convex(outline) && area(cut(hull, view())) > kEdge * width;
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

    // Whether a layer in that place draws nothing.
    static bool has_no_area(const Matrix& place) {
        const Point origin = place.map({0, 0});
        const Point right = place.map({1, 0});
        const Point down = place.map({0, 1});
        return std::abs((right.x - origin.x) * (down.y - origin.y) - (right.y - origin.y) * (down.x - origin.x)) <=
               kNoArea;
    }

    bool lies_the_same(const Copy& copy, const Json& mask, const NeededMask& cutter) {
        const PathProperty path(member(mask, "pt"));
        const PathProperty path_before(cutter.path);
        const bool stands_still =
            !path.is_animated() && !path_before.is_animated() && !u_.result_placement().moves(copy.result) &&
            !u_.stack_placement().moves(u_.nest_place()) && !(matte_ && u_.stack_placement().moves(*matte_));
        for (const double frame : u_.nest_frames()) {
            if (!u_.copied(copy).is_on(frame) || u_.copied(copy).transform().opacity.at(frame)[0] <= 0) continue;
            const Outline now = outline_at(path, frame);
            const Outline was = outline_at(path_before, frame);
            if (now.points.size() != was.points.size()) return false;
            const Matrix place = u_.result_placement().world(copy.result, frame);
            if (has_no_area(place)) continue;
            const Matrix place_before = place_of(cutter, frame);
            for (std::size_t i = 0; i < now.points.size(); ++i) {
                const Point p = place.map(now.points[i]);
                const Point q = place_before.map(was.points[i]);
                if (!(std::hypot(p.x - q.x, p.y - q.y) <= kUnseen)) return false;
            }
            if (stands_still) break;
        }
        return true;
    }

    Unnesting& u_;
    JsonDocument frame_json_;
    NeededMasks cutters_;
    std::optional<std::size_t> matte_;  // the layer of the stack that is among the cutters
    std::optional<OneOutline> matte_outline_;
};

}  // namespace

HeldCut find_held_cut(Unnesting& u) {
    return HeldCutFinder(u).find();
}

}  // namespace lottie::looks
