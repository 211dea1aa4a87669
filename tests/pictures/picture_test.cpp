// Pictures: background, pasting, difference, PNG.
#include "pictures/picture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using lottie::pictures::difference;
using lottie::pictures::Picture;

TEST(Picture, a_clear_pixel_over_white_is_white) {
    EXPECT_EQ(over_white(Picture(1, 1, 0)).at(0, 0), 0xffffffffu);
}

TEST(Picture, half_red_over_white_is_pink) {
    EXPECT_EQ(over_white(Picture(1, 1, 0x80800000)).at(0, 0), 0xffff7f7fu);
}

TEST(Picture, pasting_writes_only_inside_the_part) {
    Picture sheet(3, 2, 0xff000000);
    paste(sheet, Picture(1, 1, 0xffffffff), 1, 1);
    EXPECT_EQ(sheet.at(1, 1), 0xffffffffu);
    EXPECT_EQ(sheet.at(0, 1), 0xff000000u);
    EXPECT_EQ(sheet.at(1, 0), 0xff000000u);
    EXPECT_THROW(paste(sheet, Picture(2, 2), 2, 0), std::runtime_error);
}

TEST(Picture, equal_pictures_do_not_differ) {
    const Picture picture(4, 4, 0xff102030);
    EXPECT_EQ(difference(picture, picture).mean, 0);
    EXPECT_EQ(difference(picture, picture).share_beyond_8, 0);
}

TEST(Picture, one_changed_channel_of_one_pixel_in_four_counts_by_its_share) {
    const Picture black(2, 2, 0xff000000);
    Picture spot = black;
    spot.at(1, 0) = 0xff0c0000;  // red up by 12
    EXPECT_DOUBLE_EQ(difference(black, spot).mean, 1.0);
    EXPECT_DOUBLE_EQ(difference(black, spot).share_beyond_8, 0.25);
}

TEST(Picture, the_difference_picture_is_black_where_equal_and_holds_what_a_channel_is_apart_times_the_gain) {
    const Picture black(2, 1, 0xff000000);
    Picture spot = black;
    spot.at(1, 0) = 0xff0c0050;  // red up by 12, blue by 80
    const Picture apart = difference_picture(black, spot, 4);
    EXPECT_EQ(apart.at(0, 0), 0xff000000u);
    EXPECT_EQ(apart.at(1, 0), 0xff3000ffu);
    EXPECT_EQ(difference_picture(spot, black, 4).pixels, apart.pixels);
}

TEST(Picture, pictures_of_two_sizes_have_no_difference) {
    EXPECT_THROW(difference(Picture(1, 1), Picture(2, 1)), std::runtime_error);
    EXPECT_THROW(difference_picture(Picture(1, 1), Picture(2, 1), 1), std::runtime_error);
}

TEST(Picture, a_png_in_memory_is_the_file) {
    const auto file = std::filesystem::path(testing::TempDir()) / "picture_in_memory_test.png";
    const Picture picture(7, 3, 0xff00ff00);
    write_png(picture, file);
    std::ifstream in(file, std::ios::binary);
    EXPECT_EQ(png(picture), std::string(std::istreambuf_iterator<char>(in), {}));
    std::filesystem::remove(file);
}

TEST(Picture, a_png_file_begins_with_its_signature) {
    const auto file = std::filesystem::path(testing::TempDir()) / "picture_test.png";
    write_png(Picture(2, 2, 0xff00ff00), file);
    std::ifstream in(file, std::ios::binary);
    char start[4] = {};
    in.read(start, 4);
    EXPECT_EQ(std::string(start, 4), "\x89PNG");
    std::filesystem::remove(file);
}

TEST(Picture, a_png_that_cannot_be_written_is_reported_in_a_sentence) {
    EXPECT_THROW(write_png(Picture(1, 1), "no-such-folder/picture.png"), std::runtime_error);
}

}  // namespace
