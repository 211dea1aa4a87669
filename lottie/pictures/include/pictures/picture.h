// A picture in memory, writing it as PNG, and telling how far two pictures differ.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace lottie::pictures {

// Rows from the top, pixels 0xAARRGGBB, colour premultiplied by alpha.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    Picture(int w, int h, std::uint32_t color = 0);
    std::uint32_t& at(int x, int y);
    std::uint32_t at(int x, int y) const;
};

// The picture over white, opaque.
Picture over_white(const Picture& picture);

// Copies `part` into `sheet` with its corner at (x, y); it must fit.
void paste(Picture& sheet, const Picture& part, int x, int y);

// The bytes of a PNG file with the opaque picture.
std::string png(const Picture& picture);

// Writes png() to a file. Throws std::runtime_error with one sentence when it cannot be written whole.
void write_png(const Picture& picture, const std::filesystem::path& file);

// How far two pictures of one size differ, both seen over white. The single worst pixel says nothing about equal looks
// (edges move by a hair), so it is not among the measures.
struct Difference {
    double mean = 0;            // of all channels, 0..255
    double share_beyond_8 = 0;  // of pixels with a channel differing by more than 8, 0..1
    double ssim = 1;  // structural similarity of brightness in blocks of 8 x 8 pixels, their mean; 1 = the same
};
Difference difference(const Picture& a, const Picture& b);

// How far each channel of each pixel is apart, `gain` times, over white: black where the two are the same.
Picture difference_picture(const Picture& a, const Picture& b, int gain);

}  // namespace lottie::pictures
