// Every way in which up to four layers of a nest can be parented, in every way in which the nest itself can be.
#include <gtest/gtest.h>

#include "stage.h"

namespace {

using small_worlds::Choices;
using small_worlds::kNone;
using small_worlds::Piece;
using small_worlds::World;

enum class Naming { distinct, all_the_same };

// "Main" holds Above, the nest and Below.
constexpr int kAbove = 0;
constexpr int kNest = 1;
constexpr int kBelow = 2;

struct Links {
    int of_nest;
    bool above_follows_nest;
    bool below_follows_nest;
};

// The nest without a parent and under either neighbour; and as the parent of those that it does not follow.
std::vector<Links> all_links_of_nest() {
    std::vector<Links> all;
    for (const int parent : {kNone, kAbove, kBelow}) {
        for (const bool above : {false, true}) {
            for (const bool below : {false, true}) {
                if (!(above && parent == kAbove) && !(below && parent == kBelow)) all.push_back({parent, above, below});
            }
        }
    }
    return all;
}

World world_of(const std::vector<int>& parents, Naming naming, bool is_keyed, const Links& links) {
    World world;
    world.nested = {small_worlds::solids(static_cast<int>(parents.size()))};
    small_worlds::set_parents(world.nested[0], parents);
    if (naming == Naming::all_the_same) {
        for (Piece& piece : world.nested[0]) piece.name = "Above";
    }
    world.main = {{.name = "Above", .parent = links.above_follows_nest ? kNest : kNone},
                  {.name = "Nest", .kind = Piece::Kind::nest, .parent = links.of_nest, .is_keyed = is_keyed},
                  {.name = "Below", .parent = links.below_follows_nest ? kNest : kNone}};
    return world;
}

std::string name_of(const std::vector<int>& parents, Naming naming, bool is_keyed, const Links& links) {
    return "parents inside " + small_worlds::shown(parents) +
           (naming == Naming::distinct ? "" : ", all of the same name") + (is_keyed ? ", nest keyed" : "") +
           ", nest under " + std::to_string(links.of_nest) + (links.above_follows_nest ? ", over Above" : "") +
           (links.below_follows_nest ? ", over Below" : "");
}

bool try_world(const std::vector<int>& parents, Naming naming, bool is_keyed, const Links& links) {
    small_worlds::Stage stage(world_of(parents, naming, is_keyed, links));
    const std::string name = name_of(parents, naming, is_keyed, links);
    for (const bool copy_attributes : {true, false}) {
        for (const bool keep_in_comp : {false, true}) {
            const Choices choices = {
                .copy_attributes = copy_attributes, .keep_in_comp = keep_in_comp, .prefix = keep_in_comp ? "p" : ""};
            if (!stage.keeps_promise({kNest}, choices, name)) return false;
        }
    }
    return true;
}

TEST(SmallWorlds, links_come_out_of_a_nest_as_promised_whatever_they_are) {
    const small_worlds::WorldCount count;
    const std::vector<Links> all_links = all_links_of_nest();
    std::size_t turn = 0;
    for (int layers = 0; layers <= 4; ++layers) {
        for (const std::vector<int>& parents : small_worlds::all_parent_lists(layers)) {
            for (const Naming naming : {Naming::distinct, Naming::all_the_same}) {
                for (const bool is_keyed : {false, true}) {
                    if (small_worlds::is_full_run() || layers < 3) {
                        for (const Links& links : all_links) {
                            ASSERT_TRUE(try_world(parents, naming, is_keyed, links));
                        }
                    } else {  // each list with another of the nest's own links
                        ASSERT_TRUE(try_world(parents, naming, is_keyed, all_links[turn++ % all_links.size()]));
                    }
                }
            }
        }
    }
}

}  // namespace
