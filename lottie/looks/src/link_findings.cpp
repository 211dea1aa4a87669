// Mattes, stack order, layers that were not copied, use of the source.
#include <algorithm>
#include <cmath>

#include "findings.h"

namespace lottie::looks {
namespace {

void find_split_mattes(Unnesting& u) {
    const SceneLayer* first = nullptr;
    std::size_t count = 0;
    for (const Unnesting::Copy& copy : u.copies()) {
        const SceneLayer& inner = u.inner(copy);
        const SceneLayer& copied = u.copied(copy);
        const auto expected = inner.matte ? u.copy_of(*inner.matte) : std::nullopt;
        if (copied.matte == expected && copied.matte_mode == inner.matte_mode) continue;
        if (count++ == 0) first = &inner;
    }
    for (std::size_t place = 0; place < u.stack().layers.size(); ++place) {
        const SceneLayer& layer = u.stack().layers[place];
        const auto kept = u.kept_at(place);
        if (!kept || u.is_unnested(place) || layer.matte == u.nest_place()) continue;
        const auto expected = layer.matte ? u.kept_at(*layer.matte) : std::nullopt;
        if (u.result().layers[*kept].matte == expected) continue;
        if (count++ == 0) first = &layer;
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
    for (std::size_t inner = 0; inner < u.inside().layers.size(); ++inner) {
        const SceneLayer& layer = u.inside().layers[inner];
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
    bool operator==(const Drawn&) const = default;
};

// The drawn layers from top to bottom, each un-nested nest standing for its layers.
std::vector<Drawn> expected_order(const Unnesting& u) {
    std::vector<Drawn> order;
    for (std::size_t place = 0; place < u.stack().layers.size(); ++place) {
        const SceneLayer& layer = u.stack().layers[place];
        if (!u.is_unnested(place)) {
            if (layer.draws()) order.push_back({false, 0, place});
            continue;
        }
        const Stack* inside = u.before().find(layer.source);
        for (std::size_t inner = 0; inside != nullptr && inner < inside->layers.size(); ++inner) {
            if (inside->layers[inner].draws()) order.push_back({true, place, inner});
        }
    }
    return order;
}

std::vector<Drawn> order_after(const Unnesting& u) {
    std::vector<Drawn> order;
    for (std::size_t i = 0; i < u.change().after.size(); ++i) {
        const Origin& origin = u.change().after[i];
        if (origin.kind == Origin::Kind::made) continue;
        const bool is_copy = origin.kind == Origin::Kind::copied;
        if (!is_copy && u.is_unnested(origin.layer)) continue;
        if (u.result().layers[i].draws()) order.push_back({is_copy, is_copy ? origin.nest : 0, origin.layer});
    }
    return order;
}

void find_order(Unnesting& u) {
    const auto expected = expected_order(u);
    const auto after = order_after(u);
    const auto [a, b] = std::mismatch(expected.begin(), expected.end(), after.begin(), after.end());
    if (a == expected.end() || b == after.end()) return;  // missing ones are other findings
    const bool is_same_set =
        expected.size() == after.size() && std::is_permutation(expected.begin(), expected.end(), after.begin());
    if (!is_same_set) return;
    const SceneLayer& layer =
        a->is_copy ? u.before().find(u.stack().layers[a->nest].source)->layers[a->layer] : u.stack().layers[a->layer];
    u.add({Reason::order,
           Weight::change,
           "layer " + quoted(layer.name) + " has another place in the stack",
           "",
           layer.name,
           "",
           {}});
}

void find_source_use(Unnesting& u) {
    std::size_t uses = 0;
    for (const Stack& stack : u.before().stacks) {
        for (const SceneLayer& layer : stack.layers) {
            if (layer.type == LayerType::nest && layer.source == u.nest().source) ++uses;
        }
    }
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
    const auto before = static_cast<double>(u.before().byte_count);
    const auto after = static_cast<double>(u.after().byte_count);
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

void find_link_changes(Unnesting& u) {
    find_split_mattes(u);
    find_lost_layers(u);
    find_order(u);
    find_source_use(u);
}

}  // namespace lottie::looks
