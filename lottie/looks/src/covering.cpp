// Masks that take from layers what opaque ones above them cover while their nest is faded.
#include "covering.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "effects.h"
#include "looks/seam.h"
#include "masks.h"
#include "one_outline.h"
#include "path.h"
#include "visibility.h"

namespace lottie::looks {
namespace {

constexpr std::size_t kStepsPerVertex = 200;

MovingPath::Vertices mapped(const PathProperty::Vertices& path, const Matrix& place) {
    MovingPath::Vertices result;
    result.is_closed = path.is_closed;
    for (std::size_t i = 0; i < path.at.size(); ++i) {
        const Point at = place.map(path.at[i]);
        const auto handle = [&](Point arrow) {
            const Point end = place.map({path.at[i].x + arrow.x, path.at[i].y + arrow.y});
            return PlanePoint{end.x - at.x, end.y - at.y};
        };
        result.at.push_back({at.x, at.y});
        result.in.push_back(handle(path.in[i]));
        result.out.push_back(handle(path.out[i]));
    }
    return result;
}

// All of the path lies within.
Hull around(const PathProperty::Vertices& path) {
    std::vector<Point> points = path.at;
    for (std::size_t i = 0; i < path.at.size(); ++i) {
        for (const Point& handle : {path.in[i], path.out[i]})
            points.push_back({path.at[i].x + handle.x, path.at[i].y + handle.y});
    }
    return hull_of(std::move(points));
}

bool are_close(const std::vector<PlanePoint>& a, const std::vector<PlanePoint>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](PlanePoint p, PlanePoint q) { return std::hypot(p.x - q.x, p.y - q.y) <= kUnseen; });
}

bool are_close(const MovingPath::Vertices& a, const MovingPath::Vertices& b) {
    return are_close(a.at, b.at) && are_close(a.in, b.in) && are_close(a.out, b.out);
}

// Whether a mask of that path takes nothing away.
bool is_point(const PathProperty::Vertices& path) {
    const auto is_none = [](Point p) { return p.x == 0 && p.y == 0; };
    return std::all_of(path.at.begin(), path.at.end(),
                       [&](Point p) { return p.x == path.at[0].x && p.y == path.at[0].y; }) &&
           std::all_of(path.in.begin(), path.in.end(), is_none) &&
           std::all_of(path.out.begin(), path.out.end(), is_none);
}

}  // namespace

class Covering::Reader {
  public:
    Reader(Unnesting& u, Covering& covering) : u_(u), covering_(covering), areas_(u.inside().size()) {}

    void read(const Copy& copy) {
        const SceneLayer& inner = u_.inner(copy);
        const SceneLayer& copied = u_.copied(copy);
        if (!copied.has_masks || inner.has_masks || !inner.draws() || is_picture_changed(inner) ||
            u_.inside().matte(copy.inner) || !u_.inside_survey().has_reliable_placement(copy.inner)) {
            return;
        }
        const auto masks = copied.array("masksProperties");
        if (masks.Size() < 2) return;
        for (const Json& mask : masks) {
            if (mode_of(mask) != (&mask == masks.Begin() ? "a" : "s") || !is_plain_mask(mask) || !has_hard_edge(mask))
                return;
        }
        const PathProperty first(member(masks[0], "pt"));
        const bool is_frame = lies_around(copy, first, 0);
        if (!is_frame && !lies_around(copy, first, 1)) return;
        std::vector<PathProperty> covers;
        std::vector<Taken> taken;
        for (rapidjson::SizeType i = 1; i < masks.Size(); ++i) {
            covers.emplace_back(member(masks[i], "pt"));
            auto cover = read_cover(copy, covers.back());
            if (!cover) return;
            taken.push_back(std::move(*cover));
        }
        if (!leaves_some(copy, first, covers)) return;
        covering_.ends_at_frame_[copy.inner] = is_frame;
        for (const Taken& one : taken) {
            std::vector<bool>& frames = covering_.taken_[{copy.inner, one.above.layer}];
            if (frames.empty()) frames = all_taken(one.above.layer, taken);
        }
    }

  private:
    // One of the areas of a layer that may cover others.
    struct Area {
        OneOutline outline;
        PathProperty path;
    };
    struct AreaOf {
        std::size_t layer;  // inside
        std::size_t area;
    };

    std::vector<Area>& areas_of(std::size_t inner) {
        std::optional<std::vector<Area>>& areas = areas_[inner];
        if (areas) return *areas;
        areas.emplace();
        const bool can_cover =
            u_.copy_of(inner) && !u_.inside().matte(inner) && u_.inside_survey().has_reliable_placement(inner);
        if (!can_cover) return *areas;
        for (OneOutline& outline : outlines_at_any_opacity(u_.inside().layer(inner))) {
            PathProperty path(outline.path);
            areas->push_back({std::move(outline), std::move(path)});
        }
        return *areas;
    }

    bool is_shown(const Copy& copy, double frame) const {
        return u_.copied(copy).is_on(frame) && u_.nest().transform().opacity.at(frame)[0] > 0;
    }

    // Whether the mask is the nest's frame, moved outward by so many times its size.
    bool lies_around(const Copy& copy, const PathProperty& mask, double by) {
        const double w = u_.nest().width;
        const double h = u_.nest().height;
        PathProperty::Vertices frame;
        frame.at = {{-by * w, -by * h}, {w + by * w, -by * h}, {w + by * w, h + by * h}, {-by * w, h + by * h}};
        frame.in.resize(4);
        frame.out.resize(4);
        return std::all_of(u_.nest_frames().begin(), u_.nest_frames().end(), [&](double at) {
            if (!is_shown(copy, at)) return true;
            const Matrix place = u_.result_placement().world(copy.result, at);
            u_.comparison().spend(kStepsPerVertex * frame.at.size());
            return are_close(mapped(mask.vertices_at(at), place),
                             mapped(frame, u_.stack_placement().world(u_.nest_place(), at)));
        });
    }

    // The part of the picture that it covers, in so far as a layer below is to lack it.
    std::optional<MovingPath::Vertices> covered(AreaOf above, double frame) {
        const double inner_frame = u_.inner_frame(frame);
        const SceneLayer& layer = u_.inside().layer(above.layer);
        const double opacity = u_.nest().transform().opacity.at(frame)[0];
        if (opacity <= 0 || opacity >= 100 || !layer.is_on(inner_frame) ||
            layer.transform().opacity.at(inner_frame)[0] < 100 || layer.transform().opacity.has_expression()) {
            return std::nullopt;
        }
        const Area& area = areas_of(above.layer)[above.area];
        const Matrix place = area.outline.place.then(u_.inside_placement().world(above.layer, inner_frame))
                                 .then(u_.stack_placement().world(u_.nest_place(), frame));
        const PathProperty::Vertices path = area.path.vertices_at(inner_frame);
        u_.comparison().spend(kStepsPerVertex * path.at.size());
        return within_seam(mapped(path, place), opacity / 100, seam_pixel(u_.stack().width));
    }

    struct Taken {
        AreaOf above;
        std::vector<bool> frames;
    };

    // What a mask takes away, and the frames at which it does; nothing if it takes anything else.
    std::optional<Taken> read_cover(const Copy& copy, const PathProperty& mask) {
        std::optional<AreaOf> above;
        std::vector<bool> frames(u_.nest_frames().size());
        for (std::size_t i = 0; i < frames.size(); ++i) {
            const double frame = u_.nest_frames()[i];
            if (!is_shown(copy, frame)) continue;
            const PathProperty::Vertices at = mask.vertices_at(frame);
            u_.comparison().spend(kStepsPerVertex * at.at.size());
            if (is_point(at)) continue;
            const MovingPath::Vertices taken = mapped(at, u_.result_placement().world(copy.result, frame));
            if (!above) above = find_above(copy, taken, frame);
            const auto needed = above ? covered(*above, frame) : std::nullopt;
            if (!needed || !are_close(taken, *needed)) return std::nullopt;
            frames[i] = true;
        }
        if (!above) return std::nullopt;
        return Taken{*above, std::move(frames)};
    }

    std::optional<AreaOf> find_above(const Copy& copy, const MovingPath::Vertices& taken, double frame) {
        for (std::size_t above = 0; above < copy.inner; ++above) {
            for (std::size_t area = 0; area < areas_of(above).size(); ++area) {
                const auto path = covered({above, area}, frame);
                if (path && are_close(taken, *path)) return AreaOf{above, area};
            }
        }
        return std::nullopt;
    }

    // The frames at which masks take away all areas of a layer above.
    std::vector<bool> all_taken(std::size_t above, const std::vector<Taken>& taken) {
        std::vector<bool> frames(u_.nest_frames().size());
        for (std::size_t i = 0; i < frames.size(); ++i) {
            std::set<std::size_t> areas;
            for (const Taken& one : taken) {
                if (one.above.layer == above && one.frames[i]) areas.insert(one.above.area);
            }
            frames[i] = areas.size() == areas_of(above).size();
        }
        return frames;
    }

    // Where masks so far leave nothing of the picture, some players take the next one for the first.
    bool leaves_some(const Copy& copy, const PathProperty& first, const std::vector<PathProperty>& covers) {
        constexpr double kEdge = 2;  // pixels
        const Hull view = hull_of(Box{0, 0, u_.stack().width, u_.stack().height});
        return std::all_of(u_.nest_frames().begin(), u_.nest_frames().end(), [&](double frame) {
            if (!is_shown(copy, frame)) return true;
            const Matrix place = u_.result_placement().world(copy.result, frame);
            const auto seen = [&](const PathProperty& path) {
                return area(cut(looks::mapped(around(path.vertices_at(frame)), place), view));
            };
            double left = seen(first);
            for (const PathProperty& cover : covers) left -= seen(cover);
            return left > kEdge * u_.stack().width;
        });
    }

    Unnesting& u_;
    Covering& covering_;
    std::vector<std::optional<std::vector<Area>>> areas_;  // by place inside
};

Covering::Covering(Unnesting& u) : ends_at_frame_(u.inside().size()) {
    const Property& opacity = u.nest().transform().opacity;
    // What a nest with masks or a matte of its own leaves of its layers is told otherwise.
    if (u.nest().has_masks || u.stack().matte(u.nest_place()) || opacity.has_expression() ||
        !u.stack_survey().has_reliable_placement(u.nest_place())) {
        return;
    }
    const bool fades = std::any_of(u.nest_frames().begin(), u.nest_frames().end(), [&](double frame) {
        return opacity.at(frame)[0] > 0 && opacity.at(frame)[0] < 100;
    });
    if (!fades) return;
    Reader reader(u, *this);
    for (const Copy& copy : u.copies()) reader.read(copy);
}

bool Covering::takes_away(std::size_t below, std::size_t above, std::size_t frame) const {
    const auto found = taken_.find({below, above});
    return found != taken_.end() && found->second[frame];
}

}  // namespace lottie::looks
