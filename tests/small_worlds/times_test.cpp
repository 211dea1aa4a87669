// Times of a nest and of a layer in it, on both sides of every limit at which something is trimmed.
#include <gtest/gtest.h>

#include "stage.h"

namespace {

using small_worlds::Choices;
using small_worlds::Piece;
using small_worlds::World;

struct Span {
    int start;
    int in;
    int out;
};

std::vector<Span> spans(const std::vector<int>& starts, const std::vector<int>& ins, const std::vector<int>& outs) {
    std::vector<Span> all;
    for (const int start : starts) {
        for (const int in : ins) {
            for (const int out : outs) {
                if (in < out) all.push_back({start, in, out});
            }
        }
    }
    return all;
}

std::string shown(const Span& span) {
    return small_worlds::shown(std::vector<int>{span.start, span.in, span.out});
}

Piece piece(std::string name, Piece::Kind kind, const Span& span) {
    return {.name = std::move(name), .kind = kind, .start = span.start, .in = span.in, .out = span.out};
}

const std::vector<Span> kNests = spans({-10, 0, 10}, {0, 1, 10}, {11, 30, 40});

// The fast form puts layers of the same start together in one nest: none knows of another.
std::vector<std::vector<Span>> contents() {
    if (!small_worlds::is_full_run()) {
        std::vector<std::vector<Span>> together;
        for (const int start : {-15, 0, 10}) {
            together.push_back(spans({start}, {-12, 0, 1, 9, 10, 11, 29, 30}, {0, 1, 10, 11, 20, 21, 30, 31, 40, 41}));
        }
        return together;
    }
    std::vector<std::vector<Span>> alone;
    for (const Span& span : spans({-15, -1, 0, 1, 10, 25}, {-12, -1, 0, 1, 9, 10, 11, 20, 29, 30, 31, 45},
                                  {-11, 0, 1, 2, 10, 11, 19, 20, 21, 29, 30, 31, 39, 40, 41, 50})) {
        alone.push_back({span});
    }
    return alone;
}

// Solids can be trimmed to any length, nests within nests no further than what they show.
TEST(SmallWorlds, layers_take_over_the_time_of_their_nest_on_both_sides_of_every_limit) {
    const small_worlds::WorldCount count;
    for (const Piece::Kind kind : {Piece::Kind::solid, Piece::Kind::nest}) {
        for (const Span& nest : kNests) {
            for (const std::vector<Span>& content : contents()) {
                World world;
                world.nested = {{}, small_worlds::solids(1)};
                for (const Span& span : content) world.nested[0].push_back(piece("Inner", kind, span));
                for (Piece& inner : world.nested[0]) inner.source = 1;
                world.main = {piece("Nest", Piece::Kind::nest, nest)};
                small_worlds::Stage stage(world);
                const std::string name = "nest " + shown(nest) + ", in it from " + shown(content.front());
                ASSERT_TRUE(stage.keeps_promise({0}, Choices{}, name));
            }
        }
    }
}

TEST(SmallWorlds, a_null_that_stays_has_the_time_of_its_nest_and_without_attributes_times_stay) {
    const small_worlds::WorldCount count;
    for (const Span& nest : kNests) {
        World world;
        world.nested.resize(1);
        for (const Span& span : spans({-15, 0, 10}, {0, 10, 11}, {12, 30, 31})) {
            world.nested[0].push_back(piece("Inner", Piece::Kind::solid, span));
        }
        world.main = {piece("Nest", Piece::Kind::nest, nest)};
        world.main[0].is_keyed = true;
        small_worlds::Stage stage(world);
        for (const bool copy_attributes : {true, false}) {
            ASSERT_TRUE(stage.keeps_promise({0}, Choices{.copy_attributes = copy_attributes}, "nest " + shown(nest)));
        }
    }
}

}  // namespace
