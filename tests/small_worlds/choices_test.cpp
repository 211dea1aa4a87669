// Every set of answers to the dialog, in a world where each of them matters.
#include <gtest/gtest.h>

#include "stage.h"

namespace {

using small_worlds::Choices;
using small_worlds::Piece;
using small_worlds::World;

// The nest stands under another layer and over none, is 3D, starts late, ends early and glows; two of its layers are
// random, one follows another and names it in an expression.
World world_of(bool is_keyed, bool is_source_shared) {
    World world;
    world.nested = {small_worlds::solids(3)};
    world.nested[0][0].expression = "value + random(9)";
    world.nested[0][1].parent = 2;
    world.nested[0][1].expression = "thisComp.layer('C').transform.rotation";
    world.nested[0][2].expression = "random(3)";
    world.nested[0][2].has_effect = true;
    world.main = {{.name = "Above", .parent = 2},
                  {.name = "Nest",
                   .kind = Piece::Kind::nest,
                   .parent = 3,
                   .start = 5,
                   .in = 10,
                   .out = 40,
                   .is_3d = true,
                   .is_keyed = is_keyed,
                   .has_effect = true},
                  {.name = "Middle"},
                  {.name = "Below", .parent = 2}};
    if (is_source_shared) world.main.push_back({.name = "Twin", .kind = Piece::Kind::nest});
    return world;
}

TEST(SmallWorlds, every_set_of_answers_does_what_it_says) {
    const small_worlds::WorldCount count;
    for (const bool is_keyed : {false, true}) {
        for (const bool is_source_shared : {false, true}) {
            small_worlds::Stage stage(world_of(is_keyed, is_source_shared));
            const std::string name =
                std::string("a nest") + (is_keyed ? ", keyed" : "") + (is_source_shared ? ", with a twin" : "");
            for (const char* prefix : {"", "fx", "\xC3\xA9_\xE2\x82\xAC"}) {
                for (unsigned set = 0; set < 32; ++set) {
                    const Choices choices = {.copy_attributes = (set & 1) != 0,
                                             .delete_source = (set & 2) != 0,
                                             .keep_in_comp = (set & 4) != 0,
                                             .prepend_name = (set & 8) != 0,
                                             .fix_random = (set & 16) != 0,
                                             .prefix = prefix};
                    EXPECT_TRUE(stage.keeps_promise({1}, choices, name));
                }
            }
        }
    }
}

}  // namespace
