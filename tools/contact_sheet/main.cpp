// contact_sheet [--width PIXELS] BEFORE AFTER PICTURE FRAME...: frames of two animations as one PNG, the first
// animation above the second, and how far each pair differs on standard output.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "pictures/animation.h"

namespace {

constexpr int kGap = 8;
constexpr std::uint32_t kPaper = 0xff606060;

lottie::pictures::Animation load(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error(file + ": cannot be read");
    return lottie::pictures::Animation(std::string(std::istreambuf_iterator<char>(in), {}));
}

int to_number(const std::string& text) {
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end) throw std::runtime_error(text + " is no whole number");
    return number;
}

// `words` are the two animations, the picture and the frames.
void draw_sheet(const std::vector<std::string>& words, int width) {
    const lottie::pictures::Animation before = load(words[0]);
    const lottie::pictures::Animation after = load(words[1]);
    const int height = width * before.height() / std::max(1, before.width());
    const int columns = static_cast<int>(words.size()) - 3;
    lottie::pictures::Picture sheet(columns * (width + kGap) + kGap, 2 * (height + kGap) + kGap, kPaper);
    for (int i = 0; i < columns; ++i) {
        const int frame = to_number(words[static_cast<std::size_t>(i) + 3]);
        const auto above = over_white(before.frame(frame, width, height));
        const auto below = over_white(after.frame(frame, width, height));
        paste(sheet, above, kGap + i * (width + kGap), kGap);
        paste(sheet, below, kGap + i * (width + kGap), height + 2 * kGap);
        const auto apart = difference(above, below);
        std::printf("frame %d: mean difference %.4f of 255, %.3f %% of pixels beyond 8\n", frame, apart.mean,
                    100 * apart.share_beyond_8);
    }
    write_png(sheet, words[2]);
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> words(argv + 1, argv + argc);
    try {
        int width = 400;
        if (words.size() > 1 && words[0] == "--width") {
            width = to_number(words[1]);
            words.erase(words.begin(), words.begin() + 2);
        }
        if (words.size() < 4 || width < 1) {
            std::fputs("usage: contact_sheet [--width PIXELS] BEFORE AFTER PICTURE FRAME...\n", stderr);
            return 2;
        }
        draw_sheet(words, width);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "contact_sheet: %s\n", problem.what());
        return 1;
    }
    return 0;
}
