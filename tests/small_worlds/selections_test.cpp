// Every selection of up to three layers, in every order, in a world with several nests.
#include <gtest/gtest.h>

#include <algorithm>

#include "stage.h"

namespace {

using small_worlds::Choices;
using small_worlds::Piece;
using small_worlds::World;

// Two layers show the same composition, one another, which holds a nest as well.
World world_of(bool are_keyed) {
    World world;
    world.nested = {small_worlds::solids(2), small_worlds::solids(3)};
    world.nested[0][0].parent = 1;
    world.nested[1][1].kind = Piece::Kind::nest;
    world.nested[1][1].source = 2;
    world.nested.push_back(small_worlds::solids(1));
    world.main = {{.name = "Text", .kind = Piece::Kind::text, .parent = 1},
                  {.name = "Twin 1", .kind = Piece::Kind::nest, .is_keyed = are_keyed},
                  {.name = "Solid", .parent = 3},
                  {.name = "Nest", .kind = Piece::Kind::nest, .source = 1, .is_keyed = are_keyed},
                  {.name = "Twin 2", .kind = Piece::Kind::nest, .parent = 0}};
    return world;
}

// Without the empty one: then the command is not offered.
std::vector<std::vector<int>> all_selections(int layers, std::size_t most) {
    std::vector<std::vector<int>> selections = {{}};
    for (std::size_t i = 0; i < selections.size(); ++i) {
        if (selections[i].size() == most) continue;
        for (int layer = 0; layer < layers; ++layer) {
            std::vector<int> longer = selections[i];
            if (std::find(longer.begin(), longer.end(), layer) != longer.end()) continue;
            longer.push_back(layer);
            selections.push_back(longer);
        }
    }
    selections.erase(selections.begin());
    return selections;
}

TEST(SmallWorlds, every_selection_is_worked_through_in_its_order) {
    const small_worlds::WorldCount count;
    const std::vector<Choices> all_choices = {{},
                                              {.delete_source = true},
                                              {.copy_attributes = false, .delete_source = true, .prefix = "fx"},
                                              {.keep_in_comp = true, .prepend_name = true},
                                              {.copy_attributes = false, .keep_in_comp = true}};
    for (const bool are_keyed : {false, true}) {
        const World world = world_of(are_keyed);
        small_worlds::Stage stage(world);
        for (const std::vector<int>& selection : all_selections(static_cast<int>(world.main.size()), 3)) {
            const bool has_nest = std::any_of(selection.begin(), selection.end(), [&](int place) {
                return world.main.at(static_cast<std::size_t>(place)).kind == Piece::Kind::nest;
            });
            for (const Choices& choices : all_choices) {
                const std::string name = "selected " + small_worlds::shown(selection) + (are_keyed ? ", keyed" : "");
                EXPECT_TRUE(has_nest ? stage.keeps_promise(selection, choices, name) : stage.refuses(selection))
                    << name;
            }
        }
    }
}

}  // namespace
