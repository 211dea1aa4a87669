// Where the copies and all other layers lie.
#include <algorithm>
#include <cmath>

#include "bounds.h"
#include "findings.h"

namespace lottie::looks {
namespace {

struct Displacement {
    const SceneLayer* layer = nullptr;
    double distance = 0;  // pixels, the furthest
    double frame = 0;     // the first at which the eye sees it
    std::size_t layers = 0;
};

Hull extent(Unnesting& u, const SceneLayer& layer, double frame, const Stack& stack) {
    Hull hull = u.extents().of(layer, frame);
    return area(hull) > 0 ? hull : hull_of(Box{0, 0, stack.width, stack.height});
}

double distance(const Hull& hull, const Matrix& a, const Matrix& b) {
    double furthest = 0;
    for (const Point& corner : hull) {
        const Point p = a.map(corner);
        const Point q = b.map(corner);
        const double apart = std::hypot(p.x - q.x, p.y - q.y);
        furthest = std::isfinite(apart) ? std::max(furthest, apart) : std::max(furthest, 1e9);
    }
    return furthest;
}

// `apart_at(frame)` is the distance in pixels at a frame of the stack, negative when the layer is not seen there.
template <class Distance>
void measure(Displacement& all, const SceneLayer& layer, const std::vector<double>& frames, bool moves,
             Distance apart_at) {
    bool is_counted = false;
    for (const double frame : frames) {
        const double apart = apart_at(frame);
        if (apart < 0) continue;
        if (apart > kUnseen && !is_counted) {
            is_counted = true;
            if (all.layers++ == 0 || frame < all.frame) all.frame = frame;
        }
        if (apart > all.distance) all.distance = apart, all.layer = &layer;
        if (!moves) return;
    }
}

Displacement compare_copies(Unnesting& u) {
    Displacement all;
    for (const Unnesting::Copy& copy : u.copies()) {
        const SceneLayer& inner = u.inner(copy);
        if (!inner.can_draw() || inner.is_hidden) continue;
        const bool moves = u.inside_placement().moves(copy.inner) || u.stack_placement().moves(u.nest_place()) ||
                           u.result_placement().moves(copy.result);
        // Another clock is another finding: places are compared at the time that the copy shows.
        const double shift = u.copied(copy).start - inner.start;
        measure(all, inner, u.nest_frames(), moves, [&](double frame) {
            const double inner_frame = u.only_shifts() ? u.inner_frame(frame) : frame - shift;
            if (!is_on(inner, inner_frame) || !is_on(u.copied(copy), frame)) return -1.0;
            const Matrix before = u.inside_placement()
                                      .world(copy.inner, inner_frame)
                                      .then(u.stack_placement().world(u.nest_place(), frame));
            return distance(extent(u, inner, inner_frame, u.inside()), before,
                            u.result_placement().world(copy.result, frame));
        });
    }
    return all;
}

bool is_uneven(const Property& scale) {
    const auto values = scale.key_values();
    return std::any_of(values.begin(), values.end(), [](const Values& v) { return std::abs(v[0] - v[1]) > 1e-6; });
}

struct Cause {
    Reason reason;
    std::string sentence;
};

// Why the copies lie elsewhere, from the most to the least telling.
Cause cause_for_copies(const Unnesting& u) {
    const SceneLayer& nest = u.nest();
    if (nest.parent) {
        return {Reason::parent,
                "its parent, layer " + quoted(u.stack().layers[*nest.parent].name) + ", does not carry the copies"};
    }
    if (nest.transform.is_3d) return {Reason::three_d, "its place in 3D is not kept"};
    if (nest.transform.is_auto_oriented && nest.transform.position.is_animated()) {
        return {Reason::auto_orient, "its turning along the path is lost"};
    }
    if (is_uneven(nest.transform.scale)) {
        return {Reason::shear, "its uneven scale would shear turned layers, which layers cannot hold"};
    }
    return {Reason::place, "its transform does not reach every layer"};
}

std::string where(const Displacement& d) {
    return layers_named(d.layer->name, d.layers) + " " + in_number(d.layers, "lies", "lie") + " up to " +
           plain(d.distance) + " pixels off" + (d.layers > 0 ? ", first seen at frame " + plain(d.frame) : "");
}

void find_copies(Unnesting& u) {
    const Displacement displacement = compare_copies(u);
    const Cause cause = cause_for_copies(u);
    if (displacement.distance > kNothing) {
        const bool is_seen = displacement.layers > 0;
        u.add({cause.reason, is_seen ? Weight::change : Weight::slight, cause.sentence + ": " + where(displacement),
               is_seen ? "un-nest the composition around it first, or keep this nest" : "", displacement.layer->name,
               "ks", is_seen ? std::optional(displacement.frame) : std::nullopt});
    } else if (cause.reason == Reason::parent) {
        u.add({Reason::parent,
               Weight::harmless,
               "it has a parent, layer " + quoted(u.stack().layers[*u.nest().parent].name) +
                   "; the copies lie where they were",
               "",
               "",
               "parent",
               {}});
    } else if (cause.reason == Reason::shear) {
        u.add({Reason::shear,
               Weight::harmless,
               "its scale is uneven; no layer inside is turned against it",
               "",
               "",
               "ks.s",
               {}});
    } else if (u.nest().transform.is_auto_oriented) {
        u.add({Reason::auto_orient,
               Weight::harmless,
               "it would turn along its path and does not move",
               "",
               "",
               "ao",
               {}});
    }
    if (u.nest().transform.has_expression()) {
        u.add({Reason::transform_expression,
               u.nest_frames().empty() ? Weight::harmless : Weight::change,
               "an expression of its transform is lost: the layers stay at the values behind it",
               "bake the expression to keyframes",
               "",
               "ks",
               {}});
    }
}

// The layer itself or its nearest ancestor that hung on another layer before; null if none did.
const SceneLayer* changed_link(const Unnesting& u, std::size_t place, bool& is_nests_child) {
    std::optional<std::size_t> at = place;
    while (at) {
        const SceneLayer& layer = u.stack().layers[*at];
        const auto kept = u.kept_at(*at);
        if (!kept) return nullptr;
        const auto parent_after = u.result().layers[*kept].parent;
        if (layer.parent) {
            is_nests_child = *layer.parent == u.nest_place();
            if (parent_after != u.kept_at(*layer.parent) || !parent_after) return &layer;
        } else if (parent_after) {
            return &layer;
        }
        at = layer.parent;
    }
    return nullptr;
}

void find_others(Unnesting& u) {
    Displacement children, others;
    const SceneLayer* cut_child = nullptr;
    const SceneLayer* cut_other = nullptr;
    std::size_t cut_children = 0;
    std::size_t cut_others = 0;
    for (std::size_t place = 0; place < u.stack().layers.size(); ++place) {
        const auto kept = u.kept_at(place);
        if (!kept || u.is_unnested(place)) continue;
        const SceneLayer& layer = u.stack().layers[place];
        bool is_nests_child = false;
        const SceneLayer* cut = changed_link(u, place, is_nests_child);
        if (cut == &layer) {
            if ((is_nests_child ? cut_children : cut_others)++ == 0) (is_nests_child ? cut_child : cut_other) = &layer;
        }
        if (!layer.can_draw() || layer.is_hidden) continue;
        const bool moves = u.stack_placement().moves(place) || u.result_placement().moves(*kept);
        measure(is_nests_child ? children : others, layer, u.stack_frames(), moves, [&](double frame) {
            if (!is_on(layer, frame)) return -1.0;
            return distance(extent(u, layer, frame, u.stack()), u.stack_placement().world(place, frame),
                            u.result_placement().world(*kept, frame));
        });
    }
    const auto add = [&u](Reason reason, const Displacement& d, const SceneLayer* cut, std::size_t count,
                          const std::string& what, const std::string& way_out) {
        if (d.distance > kNothing) {
            const bool is_seen = d.layers > 0;
            u.add({reason, is_seen ? Weight::change : Weight::slight, what + ": " + where(d), is_seen ? way_out : "",
                   d.layer->name, "parent", is_seen ? std::optional(d.frame) : std::nullopt});
        } else if (cut != nullptr) {
            u.add({reason,
                   Weight::harmless,
                   layers_named(cut->name, count) + " " +
                       in_number(count, "loses its parent and stays where it is",
                                 "lose their parents and stay where they are"),
                   "",
                   cut->name,
                   "parent",
                   {}});
        }
    };
    add(Reason::children, children, cut_child, cut_children, "layers hang on this nest",
        "give them another parent first");
    add(Reason::lost_link, others, cut_other, cut_others, "links of layers that are not in this nest are cut",
        "move the nest to the bottom of its composition first, or keep it");
}

}  // namespace

void find_place_changes(Unnesting& u) {
    find_copies(u);
    find_others(u);
}

}  // namespace lottie::looks
