// Where the copies and all other layers lie.
#include <algorithm>
#include <cmath>

#include "displacement.h"
#include "expression_reach.h"
#include "findings.h"
#include "sight.h"
#include "words.h"

namespace lottie::looks {
namespace {

// The layers that a layer hangs on, itself among them, whose own expressions move them: as what they are after the run.
class ExpressedLinks {
  public:
    explicit ExpressedLinks(Comparison& comparison) : c_(comparison) {}

    template <class Successor>
    void add(const Stack& stack, std::size_t place, const Successor& successor) {
        for (std::optional<std::size_t> at = place; at; at = stack.parent(*at)) {
            c_.spend(1);
            if (is_moved_by_own_expression(stack.layer(*at))) links_.push_back(successor(*at));
        }
    }
    bool are_those_of(std::size_t place_after) const {
        ExpressedLinks after(c_);
        after.add(c_.result(), place_after, [](std::size_t place) { return std::optional(place); });
        return links_ == after.links_;
    }

  private:
    Comparison& c_;
    std::vector<std::optional<std::size_t>> links_;
};

// Whether expressions move the copy that moved it not, or do no more.
bool is_led_otherwise(Unnesting& u, const Copy& copy) {
    if (!u.inside_survey().is_led(copy.inner) && !u.stack_survey().is_led(u.nest_place())) return false;
    ExpressedLinks links(u.comparison());
    links.add(u.inside(), copy.inner, [&u](std::size_t inner) { return u.copy_of(inner); });
    links.add(u.stack(), u.nest_place(), [&u](std::size_t place) { return u.kept_at(place); });
    return !links.are_those_of(copy.result);
}

// Likewise of a layer that stayed.
bool is_led_otherwise(Comparison& c, std::size_t place) {
    if (!c.stack_survey().is_led(place)) return false;
    ExpressedLinks links(c);
    links.add(c.stack(), place, [&c](std::size_t at) { return c.kept_at(at); });
    return !links.are_those_of(*c.kept_at(place));
}

// A copy, and what expressions do to it at all times.
struct ComparedCopy {
    Copy copy;
    bool is_led_otherwise;
    bool is_placed_by_expression;
};

Displacement compare_copies(Unnesting& u) {
    std::vector<Measured> layers;
    std::vector<ComparedCopy> copies;
    for (const Copy& copy : u.copies()) {
        const SceneLayer& inner = u.inner(copy);
        if (!inner.can_draw() || inner.is_hidden) continue;
        copies.push_back({copy, is_led_otherwise(u, copy), is_placed_by_expression(u, copy)});
        layers.push_back({&inner,
                          u.inside_placement().moves(copy.inner) || u.stack_placement().moves(u.nest_place()) ||
                              u.result_placement().moves(copy.result),
                          0,
                          {}});
    }
    measure(layers, u.nest_frames(), [&](std::size_t i, double frame) -> Offset {
        const auto& [copy, is_led_otherwise, is_placed_by_expression] = copies[i];
        const SceneLayer& inner = *layers[i].layer;
        // Another clock is another finding: places are compared at the time that the copy shows.
        const double shift = u.copied(copy).start - inner.start;
        const double inner_frame = u.only_shifts() || u.is_retimed() ? u.inner_frame(frame) : frame - shift;
        if (!inner.is_on(inner_frame) || !u.copied(copy).is_on(frame)) return {-1};
        if (is_led_otherwise) return {u.stack().width};
        const Matrix before =
            u.inside_placement().world(copy.inner, inner_frame).then(u.stack_placement().world(u.nest_place(), frame));
        const Matrix& after = u.result_placement().world(copy.result, frame);
        if (are_alike(before, after)) return {};
        if (is_placed_by_expression && is_out_of_sight(u, copy, frame)) return {-1};
        if (surely_lies_alike(before, after, u.inside_survey(), copy.inner, inner_frame)) return {};
        return offset_between(before, after, extent(u.inside_survey(), copy.inner, inner_frame), u.stack());
    });
    Displacement all;
    for (const Measured& one : layers) all.add(one);
    return all;
}

// Whether one path is the other moved, grown or mirrored, but not turned.
bool are_parallel(const std::vector<Values>& a, const std::vector<Values>& b) {
    if (a.size() != b.size()) return true;  // they are no copies of one another
    const auto way = [](const std::vector<Values>& points, std::size_t i, std::size_t dimension) {
        return std::abs(points[i][dimension] - points[0][dimension]);
    };
    double grown = 0;
    for (std::size_t i = 0; i < a.size(); ++i) grown = std::max({grown, way(a, i, 0), way(a, i, 1)});
    double grown_b = 0;
    for (std::size_t i = 0; i < b.size(); ++i) grown_b = std::max({grown_b, way(b, i, 0), way(b, i, 1)});
    if (grown <= 0) return true;
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (const std::size_t dimension : {0U, 1U}) {
            if (std::abs(way(a, i, dimension) * grown_b / grown - way(b, i, dimension)) > kUnseen) return false;
        }
    }
    return true;
}

// Players measure curves in their own ways; some of them find other points on a curve when it is turned.
void find_turned_curves(Unnesting& u) {
    constexpr double kMeasuredApart = 0.02;  // of the length of a curve
    for (const Copy& copy : u.copies()) {
        const Property& before = u.inner(copy).transform().position;
        const Property& after = u.copied(copy).transform().position;
        const double curve = after.longest_curve();
        if (curve * kMeasuredApart * kPictureWidth / std::max(1.0, u.stack().width) <= kUnseen) continue;
        if (are_parallel(before.key_values(), after.key_values())) continue;
        u.add({Reason::place, Weight::change,
               "the path of layer " + quoted(u.inner(copy).name) +
                   " is turned, and some players measure a turned curve otherwise",
               "keep this nest", u.inner(copy).name, "ks.p", std::nullopt});
        return;
    }
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
           plain(d.distance) + " pixels off" + (d.layers > 0 ? ", first seen at frame " + timeline_frame(d.frame) : "");
}

void find_copies(Unnesting& u) {
    const Displacement displacement = compare_copies(u);
    const Cause cause = cause_for_copies(u);
    if (displacement.distance > kNothing) {
        const bool is_seen = displacement.is_seen();
        if (!is_seen) u.add_unseen(displacement.blurred);
        u.add({cause.reason, is_seen ? Weight::change : Weight::slight, cause.sentence + ": " + where(displacement),
               !is_seen               ? ""
               : u.stack().id.empty() ? "keep this nest"
                                      : "un-nest the composition around it first, or keep this nest",
               displacement.layer->name, "ks", displacement.first_frame()});
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

// Neither hung on another layer nor does; most do not.
bool is_free(const Comparison& c, std::size_t place) {
    const auto kept = c.kept_at(place);
    return kept && !c.stack().parent(place) && !c.result().parent(*kept);
}

// For each layer that stayed: itself or its nearest ancestor that hung on another layer before; nothing if none did.
std::vector<std::optional<std::size_t>> find_cuts(const Comparison& c) {
    const std::size_t count = c.stack().size();
    std::vector<std::optional<std::size_t>> cuts(count);
    std::vector<bool> is_decided(count, false);
    std::vector<std::size_t> chain;
    for (std::size_t place = 0; place < count; ++place) {
        if (is_free(c, place)) continue;
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
        (is_nests_child ? children : others).add({&layer, false, one.distance, one.frame, one.blurred});
    }
    const auto tell = [&u](Reason reason, const Displacement& d, const SceneLayer* cut, std::size_t count,
                           const std::string& what, const std::string& way_out) {
        if (d.distance > kNothing) {
            const bool is_seen = d.is_seen();
            if (!is_seen) u.add_unseen(d.blurred);
            u.add({reason, is_seen ? Weight::change : Weight::slight, what + ": " + where(d), is_seen ? way_out : "",
                   d.layer->name, "parent", d.first_frame()});
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
    tell(Reason::children, children, cut_child, cut_children, "layers hang on this nest",
         "give them another parent first");
    tell(Reason::lost_link, others, cut_other, cut_others, "links of layers that are not in this nest are cut",
         "move the nest to the bottom of its composition first, or keep it");
}

}  // namespace

std::vector<Unhitched> find_unhitched(Comparison& c) {
    std::vector<Unhitched> all;
    const auto cuts = find_cuts(c);
    Placement& before = c.stack_survey().placement();
    Placement& after = c.result_survey().placement();
    std::vector<Measured> layers;
    std::vector<bool> are_led_otherwise;
    for (std::size_t place = 0; place < c.stack().size(); ++place) {
        const auto kept = c.kept_at(place);
        if (!kept || c.is_unnested(place)) continue;
        const bool lies_as_before = c.lies_as_before(place);
        if (cuts[place] != place && lies_as_before) continue;
        const SceneLayer& layer = c.stack().layer(place);
        const bool is_measured = layer.can_draw() && !layer.is_hidden && !lies_as_before;
        all.push_back({place, cuts[place], 0, {}, 0});
        are_led_otherwise.push_back(is_measured && is_led_otherwise(c, place));
        layers.push_back(
            {is_measured ? &layer : nullptr, is_measured && (before.moves(place) || after.moves(*kept)), 0, {}});
    }
    measure(layers, c.frames(), [&](std::size_t i, double frame) -> Offset {
        const std::size_t place = all[i].layer;
        if (layers[i].layer == nullptr) return {};
        if (!layers[i].layer->is_on(frame)) return {-1};
        if (are_led_otherwise[i]) return {c.stack().width};
        const Matrix was = before.world(place, frame);
        const Matrix& is = after.world(*c.kept_at(place), frame);
        if (are_alike(was, is)) return {};
        return offset_between(was, is, extent(c.stack_survey(), place, frame), c.stack());
    });
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i].distance = layers[i].distance;
        all[i].frame = layers[i].frame;
        all[i].blurred = layers[i].blurred;
    }
    std::erase_if(all, [](const Unhitched& one) { return one.cut != one.layer && one.distance == 0; });
    return all;
}

void find_place_changes(Unnesting& u, const SharedFindings& shared) {
    find_place_expressions(u);
    find_copies(u);
    find_turned_curves(u);
    find_others(u, shared);
}

}  // namespace lottie::looks
