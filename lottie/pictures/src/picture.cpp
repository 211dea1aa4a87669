// Pictures: backgrounds, pasting, PNG through libpng, difference.
#include "pictures/picture.h"

#include <png.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace lottie::pictures {

namespace {

int channel(std::uint32_t pixel, int shift) {
    return static_cast<int>((pixel >> shift) & 0xff);
}

double luma(std::uint32_t pixel) {
    return 0.299 * channel(pixel, 16) + 0.587 * channel(pixel, 8) + 0.114 * channel(pixel, 0);
}

// Of one block with its corner at (x, y); the constants are the usual ones for 8 bits.
double block_similarity(const Picture& a, const Picture& b, int x, int y, int width, int height) {
    constexpr double kC1 = (0.01 * 255) * (0.01 * 255);
    constexpr double kC2 = (0.03 * 255) * (0.03 * 255);
    double sum_a = 0, sum_b = 0, sum_aa = 0, sum_bb = 0, sum_ab = 0;
    for (int row = y; row < y + height; ++row) {
        for (int column = x; column < x + width; ++column) {
            const double p = luma(a.at(column, row));
            const double q = luma(b.at(column, row));
            sum_a += p, sum_b += q, sum_aa += p * p, sum_bb += q * q, sum_ab += p * q;
        }
    }
    const double count = width * height;
    const double mean_a = sum_a / count;
    const double mean_b = sum_b / count;
    const double variance_a = sum_aa / count - mean_a * mean_a;
    const double variance_b = sum_bb / count - mean_b * mean_b;
    const double covariance = sum_ab / count - mean_a * mean_b;
    return (2 * mean_a * mean_b + kC1) * (2 * covariance + kC2) /
           ((mean_a * mean_a + mean_b * mean_b + kC1) * (variance_a + variance_b + kC2));
}

double similarity(const Picture& a, const Picture& b) {
    constexpr int kBlock = 8;
    double sum = 0;
    int blocks = 0;
    for (int y = 0; y < a.height; y += kBlock) {
        for (int x = 0; x < a.width; x += kBlock, ++blocks) {
            sum += block_similarity(a, b, x, y, std::min(kBlock, a.width - x), std::min(kBlock, a.height - y));
        }
    }
    return blocks == 0 ? 1 : sum / blocks;
}

}  // namespace

Picture::Picture(int w, int h, std::uint32_t color)
    : width(w), height(h), pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), color) {}

std::uint32_t& Picture::at(int x, int y) {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
}

std::uint32_t Picture::at(int x, int y) const {
    return const_cast<Picture&>(*this).at(x, y);
}

Picture over_white(const Picture& picture) {
    Picture result = picture;
    for (std::uint32_t& pixel : result.pixels) {
        const int rest = 255 - channel(pixel, 24);
        std::uint32_t opaque = 0xff;
        for (const int shift : {16, 8, 0}) {
            opaque = opaque << 8 | static_cast<std::uint32_t>(std::min(255, channel(pixel, shift) + rest));
        }
        pixel = opaque;
    }
    return result;
}

void paste(Picture& sheet, const Picture& part, int x, int y) {
    if (x < 0 || y < 0 || x + part.width > sheet.width || y + part.height > sheet.height) {
        throw std::runtime_error("a picture does not fit on its sheet");
    }
    for (int row = 0; row < part.height; ++row) {
        const auto first = part.pixels.begin() + static_cast<std::ptrdiff_t>(row) * part.width;
        std::copy(first, first + part.width,
                  sheet.pixels.begin() + static_cast<std::ptrdiff_t>(y + row) * sheet.width + x);
    }
}

std::string png(const Picture& picture) {
    std::vector<png_byte> rgb;
    rgb.reserve(picture.pixels.size() * 3);
    for (const std::uint32_t pixel : picture.pixels) {
        for (const int shift : {16, 8, 0}) rgb.push_back(static_cast<png_byte>(channel(pixel, shift)));
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::string bytes(size, '\0');
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, rgb.data(), 0, nullptr) == 0) {
        throw std::runtime_error(std::string("the picture could not be made: ") + image.message);
    }
    bytes.resize(size);
    return bytes;
}

void write_png(const Picture& picture, const std::filesystem::path& file) {
    const std::string bytes = png(picture);
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) throw std::runtime_error(file.string() + ": the picture could not be written");
}

Difference difference(const Picture& a, const Picture& b) {
    if (a.width != b.width || a.height != b.height)
        throw std::runtime_error("pictures of two sizes cannot be compared");
    const Picture left = over_white(a);
    const Picture right = over_white(b);
    Difference result;
    double beyond = 0;
    for (std::size_t i = 0; i < left.pixels.size(); ++i) {
        int worst = 0;
        for (const int shift : {16, 8, 0}) {
            const int apart = std::abs(channel(left.pixels[i], shift) - channel(right.pixels[i], shift));
            result.mean += apart;
            worst = std::max(worst, apart);
        }
        if (worst > 8) ++beyond;
    }
    const double count = static_cast<double>(std::max<std::size_t>(1, left.pixels.size()));
    result.mean /= 3 * count;
    result.share_beyond_8 = beyond / count;
    result.ssim = similarity(left, right);
    return result;
}

Picture difference_picture(const Picture& a, const Picture& b, int gain) {
    if (a.width != b.width || a.height != b.height)
        throw std::runtime_error("pictures of two sizes cannot be compared");
    const Picture left = over_white(a);
    const Picture right = over_white(b);
    Picture result(a.width, a.height);
    for (std::size_t i = 0; i < result.pixels.size(); ++i) {
        std::uint32_t pixel = 0xff;
        for (const int shift : {16, 8, 0}) {
            const int apart = std::abs(channel(left.pixels[i], shift) - channel(right.pixels[i], shift));
            pixel = pixel << 8 | static_cast<std::uint32_t>(std::min(255, gain * apart));
        }
        result.pixels[i] = pixel;
    }
    return result;
}

}  // namespace lottie::pictures
