// Keyframes, packed and given back.
#include "model/keyframe_list.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace host::model {
namespace {

Keyframe plain(std::int64_t ticks) {
    Keyframe keyframe;
    keyframe.time.ticks = ticks;
    return keyframe;
}

// Some numbers are those of a new keyframe, some are not.
Keyframe any_keyframe(std::mt19937& random, std::int64_t ticks) {
    const auto chance = [&random](unsigned of) { return random() % of == 0; };
    const auto number = [&random] { return static_cast<double>(random()) / 1000 - 1e6; };
    Keyframe keyframe = plain(ticks);
    const auto fill = [&](Value& value) {
        if (chance(2)) return;
        for (double& n : value.n) n = chance(3) ? 0 : chance(5) ? -0.0 : number();
    };
    const auto fill_eases = [&](std::array<Ease, 3>& eases) {
        if (chance(2)) return;
        for (Ease& ease : eases) ease = chance(3) ? Ease{} : Ease{number(), number()};
    };
    fill(keyframe.value);
    fill(keyframe.tangent_in);
    fill(keyframe.tangent_out);
    fill_eases(keyframe.ease_in);
    fill_eases(keyframe.ease_out);
    keyframe.in = static_cast<Interpolation>(random() % 4);
    keyframe.out = static_cast<Interpolation>(random() % 4);
    keyframe.flags = chance(2) ? 0 : static_cast<std::uint32_t>(random());
    return keyframe;
}

TEST(KeyframeList, returns_what_it_was_given_however_it_is_filled) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 200; ++round) {
        std::vector<Keyframe> expected;
        KeyframeList list;
        for (int step = 0; step < 12; ++step) {
            const std::size_t place = random() % (expected.size() + 1);
            const Keyframe keyframe = any_keyframe(random, static_cast<std::int64_t>(random()) - (1 << 30));
            if (place < expected.size() && random() % 2 == 0) {
                expected[place] = keyframe;
                list.set(place, keyframe);
            } else {
                expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(place), keyframe);
                list.insert(place, keyframe);
            }
            ASSERT_EQ(list.to_vector(), expected);
            ASSERT_EQ(list, KeyframeList(expected));
            ASSERT_EQ(list[place], keyframe);
            ASSERT_EQ(list.time(place), keyframe.time);
        }
        list.for_each([](Keyframe& keyframe) { keyframe = plain(keyframe.time.ticks); });
        for (Keyframe& keyframe : expected) keyframe = plain(keyframe.time.ticks);
        ASSERT_EQ(list.to_vector(), expected);
    }
}

TEST(KeyframeList, keeps_the_sign_of_a_zero) {
    Keyframe keyframe = plain(0);
    keyframe.value.n[1] = -0.0;
    keyframe.ease_out[0].speed = -0.0;
    const KeyframeList list(std::vector<Keyframe>{keyframe});
    EXPECT_TRUE(std::signbit(list[0].value.n[1]));
    EXPECT_FALSE(std::signbit(list[0].value.n[0]));
    EXPECT_TRUE(std::signbit(list[0].ease_out[0].speed));
}

TEST(KeyframeList, lists_that_differ_in_one_number_differ) {
    std::vector<Keyframe> keyframes = {plain(0), plain(10)};
    const KeyframeList list(keyframes);
    keyframes[1].tangent_in.n[3] = 1;
    EXPECT_NE(list, KeyframeList(keyframes));
    keyframes[1] = plain(11);
    EXPECT_NE(list, KeyframeList(keyframes));
    keyframes.pop_back();
    EXPECT_NE(list, KeyframeList(keyframes));
}

TEST(KeyframeList, counts_what_is_before_a_time) {
    const KeyframeList list(std::vector<Keyframe>{plain(-5), plain(0), plain(7)});
    EXPECT_EQ(list.count_before({-5}), 0u);
    EXPECT_EQ(list.count_before({-4}), 1u);
    EXPECT_EQ(list.count_before({7}), 2u);
    EXPECT_EQ(list.count_before({8}), 3u);
    EXPECT_EQ(KeyframeList().count_before({0}), 0u);
}

}  // namespace
}  // namespace host::model
