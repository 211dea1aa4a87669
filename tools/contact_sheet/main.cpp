// contact_sheet BEFORE AFTER PICTURE FRAME...: frames of two animations as one PNG, the first animation above the
// second, and how far each pair differs on standard output.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "pictures/animation.h"

namespace {

constexpr int kFrameWidth = 400;  // pixels
constexpr int kGap = 8;
constexpr std::uint32_t kPaper = 0xff606060;

lottie::pictures::Animation load(const char* file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error(std::string(file) + ": cannot be read");
    return lottie::pictures::Animation(std::string(std::istreambuf_iterator<char>(in), {}));
}

int to_frame(const char* text) {
    int frame = 0;
    const char* end = text + std::strlen(text);
    const auto [rest, error] = std::from_chars(text, end, frame);
    if (error != std::errc() || rest != end) throw std::runtime_error(std::string(text) + " is no frame number");
    return frame;
}

void draw_sheet(char** argv, const std::vector<int>& frames) {
    const lottie::pictures::Animation before = load(argv[1]);
    const lottie::pictures::Animation after = load(argv[2]);
    const int height = kFrameWidth * before.height() / std::max(1, before.width());
    const int columns = static_cast<int>(frames.size());
    lottie::pictures::Picture sheet(columns * (kFrameWidth + kGap) + kGap, 2 * (height + kGap) + kGap, kPaper);
    for (int i = 0; i < columns; ++i) {
        const int frame = frames[static_cast<std::size_t>(i)];
        const auto above = over_white(before.frame(frame, kFrameWidth, height));
        const auto below = over_white(after.frame(frame, kFrameWidth, height));
        paste(sheet, above, kGap + i * (kFrameWidth + kGap), kGap);
        paste(sheet, below, kGap + i * (kFrameWidth + kGap), height + 2 * kGap);
        const auto apart = difference(above, below);
        std::printf("frame %d: mean difference %.4f of 255, %.3f %% of pixels beyond 8\n", frame, apart.mean,
                    100 * apart.share_beyond_8);
    }
    write_png(sheet, argv[3]);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 5) {
        std::fputs("usage: contact_sheet BEFORE AFTER PICTURE FRAME...\n", stderr);
        return 2;
    }
    try {
        std::vector<int> frames;
        for (int i = 4; i < argc; ++i) frames.push_back(to_frame(argv[i]));
        draw_sheet(argv, frames);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "contact_sheet: %s\n", problem.what());
        return 1;
    }
    return 0;
}
