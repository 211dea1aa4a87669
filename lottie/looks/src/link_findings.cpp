// Mattes, stack order, layers that were not copied, use of the source.
#include <algorithm>
#include <cmath>

#include "findings.h"
#include "words.h"

namespace lottie::looks {
namespace {

void find_split_mattes(Unnesting& u, const SharedFindings& shared) {
    const SceneLayer* first = nullptr;
    std::size_t count = 0;
    for (const Copy& copy : u.copies()) {
        const SceneLayer& inner = u.inner(copy);
        const auto matte = u.inside().matte(copy.inner);
        const auto expected = matte ? u.copy_of(*matte) : std::nullopt;
        if (u.result().matte(copy.result) == expected && u.copied(copy).matte_mode == inner.matte_mode) continue;
        if (count++ == 0) first = &inner;
    }
    for (const std::size_t place : shared.without_matte) {
        if (u.stack().matte(place) == u.nest_place()) continue;
        if (count++ == 0) first = &u.stack().layer(place);
    }
    if (count == 0) return;
    u.add({Reason::matte_split,
           Weight::change,
           layers_named(first->name, count) + " " + in_number(count, "loses its matte", "lose their mattes"),
           "keep this nest",
           first->name,
           "tt",
           {}});
}

void find_lost_layers(Unnesting& u) {
    const SceneLayer* first = nullptr;
    std::size_t count = 0;
    bool is_any_drawn = false;
    for (std::size_t inner = 0; inner < u.inside().size(); ++inner) {
        const SceneLayer& layer = u.inside().layer(inner);
        if (u.copy_of(inner)) continue;
        if (count++ == 0) first = &layer;
        is_any_drawn = is_any_drawn || layer.draws();
    }
    if (count == 0) return;
    u.add({Reason::lost_layer,
           is_any_drawn ? Weight::change : Weight::harmless,
           layers_named(first->name, count) + " " + in_number(count, "is", "are") + " not copied",
           "",
           first->name,
           "",
           {}});
}

// Names an origin among those of one comparison.
struct Drawn {
    bool is_copy;
    std::size_t nest;
    std::size_t layer;
    auto operator<=>(const Drawn&) const = default;
};

// The drawn layers from top to bottom, each un-nested nest standing for its layers.
std::vector<Drawn> expected_order(const Comparison& c) {
    std::vector<Drawn> order;
    for (std::size_t place = 0; place < c.stack().size(); ++place) {
        const SceneLayer& layer = c.stack().layer(place);
        if (!c.is_unnested(place)) {
            if (layer.draws()) order.push_back({false, 0, place});
            continue;
        }
        const auto* inside = c.before().find(layer.source);
        for (std::size_t inner = 0; inside != nullptr && inner < (*inside)->size(); ++inner) {
            if ((*inside)->layer(inner).draws()) order.push_back({true, place, inner});
        }
    }
    return order;
}

std::vector<Drawn> order_after(const Comparison& c) {
    std::vector<Drawn> order;
    for (std::size_t i = 0; i < c.change().after.size(); ++i) {
        const Origin& origin = c.change().after[i];
        if (origin.kind == Origin::Kind::made) continue;
        const bool is_copy = origin.kind == Origin::Kind::copied;
        if (!is_copy && c.is_unnested(origin.layer)) continue;
        if (c.result().layer(i).draws()) order.push_back({is_copy, is_copy ? origin.nest : 0, origin.layer});
    }
    return order;
}

bool are_the_same_set(std::vector<Drawn> a, std::vector<Drawn> b) {
    std::sort(a.begin(), a.end());
    std::sort(b.begin(), b.end());
    return a == b;
}

void find_source_use(Unnesting& u) {
    const Scene& before_run = u.comparison().before();
    const std::size_t uses = before_run.uses.at(u.nest().source);
    if (uses > 1) {
        u.add({Reason::shared_source,
               Weight::harmless,
               "its composition is used by " + std::to_string(uses - 1) + " more " + (uses == 2 ? "nest" : "nests") +
                   " and stays in the file",
               "",
               "",
               "refId",
               {}});
    }
    const auto before = static_cast<double>(before_run.byte_count);
    const auto after = static_cast<double>(u.comparison().rewritten().byte_count);
    const double difference = after - before;
    u.add({Reason::size,
           Weight::harmless,
           "the file " + (difference == 0 ? std::string("keeps its size")
                                          : std::string(difference > 0 ? "grows" : "shrinks") + " by " +
                                                plain(std::abs(difference)) + " bytes (" +
                                                plain(std::round(1000 * std::abs(difference) / before) / 10) + " %)"),
           "",
           "",
           "",
           {}});
}

}  // namespace

std::vector<std::size_t> find_lost_mattes(const Comparison& c) {
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < c.stack().size(); ++place) {
        const auto kept = c.kept_at(place);
        if (!kept || c.is_unnested(place)) continue;
        const auto matte = c.stack().matte(place);
        if (c.result().matte(*kept) != (matte ? c.kept_at(*matte) : std::nullopt)) places.push_back(place);
    }
    return places;
}

namespace {

// Whether the layers that stayed follow one another as before and each nest's come where it was; quick to tell.
bool is_in_order(const Comparison& c) {
    std::size_t next = 0;  // place before that is to come
    std::size_t next_inner = 0;
    for (const Origin& origin : c.change().after) {
        if (origin.kind == Origin::Kind::made) continue;
        const bool is_copy = origin.kind == Origin::Kind::copied;
        const std::size_t place = is_copy ? origin.nest : origin.layer;
        if (!is_copy && c.is_unnested(place)) continue;
        if (place < next || (is_copy && place == next && origin.layer < next_inner)) return false;
        next_inner = is_copy ? origin.layer + 1 : 0;
        next = is_copy ? place : place + 1;
    }
    return true;
}

}  // namespace

std::optional<Finding> find_order_change(const Comparison& c) {
    if (is_in_order(c)) return std::nullopt;
    const auto expected = expected_order(c);
    const auto after = order_after(c);
    const auto [a, b] = std::mismatch(expected.begin(), expected.end(), after.begin(), after.end());
    if (a == expected.end() || b == after.end()) return std::nullopt;  // missing ones are other findings
    if (!are_the_same_set(expected, after)) return std::nullopt;
    const SceneLayer& layer =
        a->is_copy ? (*c.before().find(c.stack().layer(a->nest).source))->layer(a->layer) : c.stack().layer(a->layer);
    return Finding{Reason::order,
                   Weight::change,
                   "layer " + quoted(layer.name) + " has another place in the stack",
                   "",
                   layer.name,
                   "",
                   {}};
}

void find_link_changes(Unnesting& u, const SharedFindings& shared) {
    find_split_mattes(u, shared);
    find_lost_layers(u);
    if (shared.order) u.add(*shared.order);
    find_source_use(u);
}

}  // namespace lottie::looks
