// The paths of layers that lead others.
#include <gtest/gtest.h>

#include "animations.h"
#include "survey.h"

namespace {

using namespace test;
using lottie::looks::Box;
using lottie::looks::Scene;

std::string path(const std::string& vertices, const std::string& more = "") {
    return R"({"ty":"sh","ks":{"a":0,"k":{"v":)" + vertices + R"(,"i":[[0,0],[-5,0]],"o":[[0,0],[0,0]],"c":false})" +
           more + "}}";
}

const char* const kMoving =
    R"({"ty":"sh","ks":{"a":1,"k":[{"t":0,"s":[{"v":[[0,0]],"i":[[0,0]],"o":[[0,0]],"c":true}],)"
    R"("i":{"x":1,"y":1},"o":{"x":0,"y":0}},{"t":10,"s":[{"v":[[40,0]],"i":[[0,0]],"o":[[0,0]],"c":true}]}]}})";

class Paths {
  public:
    explicit Paths(const std::string& shapes, std::size_t most_work = lottie::looks::Work::kMost)
        : text_(flat_animation({shape_layer(1, "leader", shapes)})), scene_(text_), work_(most_work) {}

    std::optional<Box> around(double frame) { return surveys_.find("")->box_around_paths(0, frame); }

  private:
    std::string text_;
    Scene scene_;
    lottie::looks::Work work_;
    lottie::looks::Surveys surveys_{scene_, work_};
};

TEST(DrawnPaths, are_told_with_their_handles_and_without_the_transforms_of_groups) {
    const std::string group =
        R"({"ty":"gr","it":[)" + path("[[0,0],[3,20]]") + R"(,{"ty":"tr","p":{"a":0,"k":[500,0]}}]})";
    EXPECT_EQ(Paths(group + "," + path("[[0,-7],[9,1]]")).around(0), (Box{-2, -7, 9, 20}));
}

TEST(DrawnPaths, move) {
    Paths paths(kMoving);
    EXPECT_EQ(paths.around(0), (Box{0, 0, 0, 0}));
    EXPECT_EQ(paths.around(5), (Box{20, 0, 20, 0}));
    EXPECT_EQ(paths.around(0), (Box{0, 0, 0, 0}));
}

TEST(DrawnPaths, are_not_told_where_an_expression_gives_one) {
    EXPECT_FALSE(Paths(path("[[0,0],[3,20]]", R"(,"x":"$bm_rt = value;")")).around(0));
}

// Thousands of layers may run along the paths of one.
TEST(DrawnPaths, are_read_once_however_many_ask) {
    std::string many = kMoving;
    for (int i = 0; i < 99; ++i) many += "," + std::string(kMoving);
    Paths paths(many, 10'000);
    for (int i = 0; i < 1000; ++i) EXPECT_EQ(paths.around(i % 2), (Box{4.0 * (i % 2), 0, 4.0 * (i % 2), 0}));
}

}  // namespace
