// Where the copies and all other layers lie.
#include <algorithm>
#include <cmath>

#include "findings.h"
#include "words.h"

namespace lottie::looks {
namespace {

struct Displacement {
    const SceneLayer* layer = nullptr;
    double distance = 0;  // pixels, the furthest
    double frame = 0;     // the first at which the eye sees it
    std::size_t layers = 0;
};

// Around the layer's picture; one that cannot be told is taken to be as large as the composition.
Hull extent(Survey& survey, std::size_t place, double frame) {
    const Hull& hull = survey.reach(place, frame);
    return area(hull) > 0 ? hull : hull_of(Box{0, 0, survey.stack().width, survey.stack().height});
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

// Whether no point of any picture lies elsewhere; much cheaper than to ask where it reaches.
bool are_alike(const Matrix& a, const Matrix& b) {
    constexpr double kFar = 1e5;  // pixels; no picture reaches further
    return distance(hull_of(Box{-kFar, -kFar, kFar, kFar}), a, b) < kNothing / 100;
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
    for (const Copy& copy : u.copies()) {
        const SceneLayer& inner = u.inner(copy);
        if (!inner.can_draw() || inner.is_hidden) continue;
        const bool moves = u.inside_placement().moves(copy.inner) || u.stack_placement().moves(u.nest_place()) ||
                           u.result_placement().moves(copy.result);
        // Another clock is another finding: places are compared at the time that the copy shows.
        const double shift = u.copied(copy).start - inner.start;
        measure(all, inner, u.nest_frames(), moves, [&](double frame) {
            const double inner_frame = u.only_shifts() ? u.inner_frame(frame) : frame - shift;
            if (!inner.is_on(inner_frame) || !u.copied(copy).is_on(frame)) return -1.0;
            const Matrix before = u.inside_placement()
                                      .world(copy.inner, inner_frame)
                                      .then(u.stack_placement().world(u.nest_place(), frame));
            const Matrix& after = u.result_placement().world(copy.result, frame);
            if (are_alike(before, after)) return 0.0;
            return distance(extent(u.inside_survey(), copy.inner, inner_frame), before, after);
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
    if (const auto parent = u.stack().parent(u.nest_place())) {
        return {Reason::parent,
                "its parent, layer " + quoted(u.stack().layer(*parent).name) + ", does not carry the copies"};
    }
    if (nest.is_3d) return {Reason::three_d, "its place in 3D is not kept"};
    if (nest.is_auto_oriented && nest.transform().position.is_animated()) {
        return {Reason::auto_orient, "its turning along the path is lost"};
    }
    if (is_uneven(nest.transform().scale)) {
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
               "it has a parent, layer " + quoted(u.stack().layer(*u.stack().parent(u.nest_place())).name) +
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
    } else if (u.nest().is_auto_oriented) {
        u.add({Reason::auto_orient,
               Weight::harmless,
               "it would turn along its path and does not move",
               "",
               "",
               "ao",
               {}});
    }
    if (u.nest().transform().has_expression()) {
        u.add({Reason::transform_expression,
               u.nest_frames().empty() ? Weight::harmless : Weight::change,
               "an expression of its transform is lost: the layers stay at the values behind it",
               "bake the expression to keyframes",
               "",
               "ks",
               {}});
    }
}

// For each layer that stayed: itself or its nearest ancestor that hung on another layer before; nothing if none did.
std::vector<std::optional<std::size_t>> find_cuts(const Comparison& c) {
    const std::size_t count = c.stack().size();
    std::vector<std::optional<std::size_t>> cuts(count);
    std::vector<bool> is_decided(count, false);
    std::vector<std::size_t> chain;
    for (std::size_t place = 0; place < count; ++place) {
        chain.clear();
        std::optional<std::size_t> cut;
        for (std::optional<std::size_t> at = place; at; at = c.stack().parent(*at)) {
            if (is_decided[*at]) {
                cut = cuts[*at];
                break;
            }
            chain.push_back(*at);
            const auto kept = c.kept_at(*at);
            if (!kept) break;
            const auto parent = c.stack().parent(*at);
            const auto parent_after = c.result().parent(*kept);
            if (parent ? parent_after != c.kept_at(*parent) || !parent_after : parent_after.has_value()) {
                cut = *at;
                break;
            }
        }
        // Those below the cut know of it, and of a chain that ends with a layer that went, nothing is known.
        for (const std::size_t link : chain) {
            cuts[link] = cut;
            is_decided[link] = true;
        }
    }
    return cuts;
}

// Measures one layer that stayed.
void compare_place(Comparison& c, std::size_t place, std::size_t kept, Unhitched& found) {
    const SceneLayer& layer = c.stack().layer(place);
    Placement& before = c.stack_survey().placement();
    Placement& after = c.result_survey().placement();
    Displacement displacement;
    measure(displacement, layer, c.frames(), before.moves(place) || after.moves(kept), [&](double frame) {
        if (!layer.is_on(frame)) return -1.0;
        const Matrix was = before.world(place, frame);
        const Matrix& is = after.world(kept, frame);
        return are_alike(was, is) ? 0.0 : distance(extent(c.stack_survey(), place, frame), was, is);
    });
    found.distance = displacement.distance;
    if (displacement.layers > 0) found.frame = displacement.frame;
}

void find_others(Unnesting& u, const SharedFindings& shared) {
    Displacement children, others;
    const SceneLayer* cut_child = nullptr;
    const SceneLayer* cut_other = nullptr;
    std::size_t cut_children = 0;
    std::size_t cut_others = 0;
    for (const Unhitched& one : shared.unhitched) {
        const bool is_nests_child = one.cut && u.stack().parent(*one.cut) == u.nest_place();
        const SceneLayer& layer = u.stack().layer(one.layer);
        if (one.cut == one.layer) {
            if ((is_nests_child ? cut_children : cut_others)++ == 0) (is_nests_child ? cut_child : cut_other) = &layer;
        }
        Displacement& all = is_nests_child ? children : others;
        if (one.frame && (all.layers++ == 0 || *one.frame < all.frame)) all.frame = *one.frame;
        if (one.distance > all.distance) all.distance = one.distance, all.layer = &layer;
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

std::vector<Unhitched> find_unhitched(Comparison& c) {
    std::vector<Unhitched> all;
    const auto cuts = find_cuts(c);
    for (std::size_t place = 0; place < c.stack().size(); ++place) {
        const auto kept = c.kept_at(place);
        if (!kept || c.is_unnested(place)) continue;
        Unhitched found{place, cuts[place], 0, {}};
        const SceneLayer& layer = c.stack().layer(place);
        if (layer.can_draw() && !layer.is_hidden && !c.lies_as_before(place)) compare_place(c, place, *kept, found);
        if (found.cut == place || found.distance > 0) all.push_back(found);
    }
    return all;
}

void find_place_changes(Unnesting& u, const SharedFindings& shared) {
    find_copies(u);
    find_others(u, shared);
}

}  // namespace lottie::looks
