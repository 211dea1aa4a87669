// The renderer in a process of its own.
#include "pictures/apart.h"

#include <gmock/gmock.h>

#include <csignal>
#include <stdexcept>

#include "squares.h"

namespace {

using lottie::pictures::Animation;
using lottie::pictures::compare_apart;
using lottie::pictures::run_apart;
using testing::HasSubstr;
using testing::ThrowsMessage;

TEST(Apart, gives_what_the_work_gives_however_long) {
    const std::string text(1 << 20, 'x');
    EXPECT_EQ(run_apart([&] { return text; }, 10), text);
    EXPECT_EQ(run_apart([] { return std::string(); }, 10), "");
}

TEST(Apart, work_that_never_ends_is_ended_and_one_sentence_says_so) {
    const auto never = []() -> std::string {
        for (volatile bool goes_on = true; goes_on;) {
        }
        return "";
    };
    EXPECT_THAT(
        [&] { run_apart(never, 1); },
        ThrowsMessage<std::runtime_error>("the renderer did not come to an end within 1 s of the processor's time"));
}

TEST(Apart, a_crash_stays_there_and_one_sentence_says_so) {
    const auto crash = []() -> std::string {
        std::signal(SIGSEGV, SIG_DFL);  // sanitizers would take it for their own
        std::raise(SIGSEGV);
        return "";
    };
    EXPECT_THAT([&] { run_apart(crash, 10); }, ThrowsMessage<std::runtime_error>(HasSubstr("the renderer crashed: ")));
}

TEST(Apart, what_the_work_throws_comes_back_with_its_sentence) {
    EXPECT_THAT([] { run_apart([]() -> std::string { throw std::runtime_error("no paint"); }, 10); },
                ThrowsMessage<std::runtime_error>("no paint"));
}

bool are_equal(const lottie::pictures::Comparison& a, const lottie::pictures::Comparison& b) {
    return a.frames == b.frames && a.worst_frame == b.worst_frame && a.worst.mean == b.worst.mean &&
           a.worst.share_beyond_8 == b.worst.share_beyond_8 && a.worst.ssim == b.worst.ssim &&
           a.looks_equal == b.looks_equal && a.worst_before.width == b.worst_before.width &&
           a.worst_before.pixels == b.worst_before.pixels && a.worst_after.pixels == b.worst_after.pixels;
}

TEST(Apart, a_comparison_comes_back_whole) {
    const std::string before = square_until(10);
    const std::string after = square_until(6);
    const auto came_back = compare_apart(before, after, {7}, 60);
    EXPECT_FALSE(came_back.looks_equal);
    EXPECT_EQ(came_back.worst_before.width, 400);
    EXPECT_EQ(run_apart(
                  [&] {
                      const auto made = compare(Animation(before), Animation(after), {7});
                      return are_equal(made, came_back) ? "the same" : "another";
                  },
                  60),
              "the same");
}

TEST(Apart, an_animation_that_the_renderer_refuses_is_refused_with_its_sentence) {
    const auto draw_nothing = [] { return Animation("{}").frame_count() > 0 ? "frames" : "none"; };
    std::string sentence;
    try {
        run_apart(draw_nothing, 60);
    } catch (const std::runtime_error& refused) {
        sentence = refused.what();
    }
    ASSERT_FALSE(sentence.empty());
    EXPECT_THAT([] { compare_apart("{}", "{}", {}, 60); }, ThrowsMessage<std::runtime_error>(sentence));
}

}  // namespace
