// Every place of the nest in a stack of five, whatever it holds and whichever others have a parent.
#include <gtest/gtest.h>

#include <bit>

#include "stage.h"

namespace {

using small_worlds::Choices;
using small_worlds::kNone;
using small_worlds::Piece;
using small_worlds::World;

constexpr int kStackSize = 5;

World world_of(int nest_place, const std::vector<int>& parents_inside, const std::vector<int>& parents_outside) {
    World world;
    world.nested = {small_worlds::solids(static_cast<int>(parents_inside.size()))};
    small_worlds::set_parents(world.nested[0], parents_inside);
    for (int i = 0; i < kStackSize; ++i) {
        world.main.push_back({.name = "Layer " + std::to_string(i),
                              .kind = i == nest_place ? Piece::Kind::nest : Piece::Kind::solid,
                              .parent = parents_outside.at(static_cast<std::size_t>(i))});
    }
    return world;
}

// Each layer of "Main" either without a parent or under the one below it, the lowest under the top one: every set but
// the circle.
std::vector<std::vector<int>> neighbours_as_parents() {
    std::vector<std::vector<int>> lists;
    for (unsigned set = 0; set + 1 < 1U << kStackSize; ++set) {
        std::vector<int>& list = lists.emplace_back();
        for (int i = 0; i < kStackSize; ++i) list.push_back((set >> i & 1U) != 0 ? (i + 1) % kStackSize : kNone);
    }
    return lists;
}

// Of the lists of parents, one for each set of layers that have none: all that matters to the layers outside. Those
// that have one follow the first that has none.
std::vector<std::vector<int>> lists_by_who_has_a_parent(int count) {
    if (count == 0) return {{}};
    std::vector<std::vector<int>> lists;
    for (unsigned parentless = 1; parentless < 1U << count; ++parentless) {
        std::vector<int>& list = lists.emplace_back();
        for (int i = 0; i < count; ++i) {
            list.push_back((parentless >> i & 1U) != 0 ? kNone : std::countr_zero(parentless));
        }
    }
    return lists;
}

bool try_world(int nest_place, const std::vector<int>& parents_inside, const std::vector<int>& parents_outside) {
    small_worlds::Stage stage(world_of(nest_place, parents_inside, parents_outside));
    const std::string name = "nest at " + std::to_string(nest_place) + ", parents inside " +
                             small_worlds::shown(parents_inside) + " and outside " +
                             small_worlds::shown(parents_outside);
    return stage.keeps_promise({nest_place}, Choices{.keep_in_comp = false}, name) &&
           stage.keeps_promise({nest_place}, Choices{.keep_in_comp = true}, name);
}

TEST(SmallWorlds, a_nest_leaves_its_layers_in_its_place_and_clears_links_by_place) {
    const small_worlds::WorldCount count;
    const auto outside =
        small_worlds::is_full_run() ? small_worlds::all_parent_lists(kStackSize) : neighbours_as_parents();
    for (int nest_place = 0; nest_place < kStackSize; ++nest_place) {
        for (int layers = 0; layers <= 3; ++layers) {
            for (const auto& parents_inside : lists_by_who_has_a_parent(layers)) {
                for (const auto& parents_outside : outside) {
                    ASSERT_TRUE(try_world(nest_place, parents_inside, parents_outside));
                }
            }
        }
    }
}

}  // namespace
