// Documents in pieces.
#include "document/output_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "document/document.h"

namespace {

using lottie::document::OutputText;

TEST(OutputText, is_what_was_put_into_it_whatever_the_lengths) {
    const auto seed = std::random_device()();
    std::cout << "seed " << seed << "\n";
    std::mt19937 random(seed);
    std::uniform_int_distribution<std::size_t> short_length(0, 300);
    std::uniform_int_distribution<std::size_t> long_length(0, 100'000);
    const std::string source(100'000, 'x');
    std::string expected;
    OutputText written;
    for (int i = 0; i < 2'000; ++i) {
        const std::size_t length = i % 50 == 0 ? long_length(random) : short_length(random);
        if (i % 3 == 0) {
            const std::string_view piece = std::string_view(source).substr(source.size() - length);
            written.refer(piece);
            expected += piece;
        } else {
            const std::string piece(length, static_cast<char>('a' + i % 23));
            written.append(piece);
            expected += piece;
        }
        ASSERT_EQ(written.size(), expected.size());
    }
    EXPECT_EQ(written.text(), expected);
    const OutputText moved = std::move(written);
    EXPECT_EQ(moved.text(), expected);
}

TEST(OutputText, points_at_what_an_animation_keeps) {
    const std::string long_name(10'000, 'n');
    const std::string text = R"({"v":"5.7.0","fr":30,"ip":0,"op":60,"w":20,"h":20,"assets":[],"layers":[)"
                             R"({"ind":1,"ty":3,"nm":"a","ks":{},"ip":0,"op":60,"st":0},)"
                             R"({"ind":2,"ty":3,"nm":")" +
                             long_name + R"(","ks":{},"ip":0,"op":60,"st":0}]})";
    const lottie::document::Document document = lottie::document::Document::read(text);
    document.main_comp().layer_at(0).rename("b");
    const OutputText written = document.write_in_pieces();
    EXPECT_EQ(written.text(), document.write());
    EXPECT_EQ(written.size(), text.size());
    const std::string& kept = document.text();
    const bool points = std::ranges::any_of(written.pieces(), [&](std::string_view piece) {
        return piece.size() > long_name.size() && piece.data() >= kept.data() &&
               piece.data() < kept.data() + kept.size();
    });
    EXPECT_TRUE(points);
}

}  // namespace
