// The renderer in a process of its own.
#include "pictures/drawing_process.h"

#include <gmock/gmock.h>

#include <csignal>
#include <ctime>
#include <functional>
#include <stdexcept>

#include "pictures_from_files.h"
#include "squares.h"

namespace {

using lottie::pictures::Animation;
using lottie::pictures::DrawingBudget;
using lottie::pictures::PictureComparison;
using testing::ThrowsMessage;

std::string run_in_child(const std::function<std::string()>& work, int seconds) {
    DrawingBudget budget{std::chrono::seconds(seconds)};
    return lottie::pictures::run_in_child(work, budget);
}

PictureComparison compare_in_child(const std::string& before, const std::string& after,
                                   const std::vector<int>& look_at) {
    DrawingBudget budget{std::chrono::minutes(1)};
    return lottie::pictures::compare_in_child(before, after, look_at, budget);
}

std::string sentence_of(const std::function<std::string()>& work, DrawingBudget& budget) {
    try {
        lottie::pictures::run_in_child(work, budget);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no error";
}

std::string compute_for_ever() {
    for (volatile bool goes_on = true; goes_on;) {
    }
    return "";
}

TEST(DrawingProcess, gives_what_the_work_gives_however_long) {
    const std::string text(1 << 20, 'x');
    EXPECT_EQ(run_in_child([&] { return text; }, 10), text);
    EXPECT_EQ(run_in_child([] { return std::string(); }, 10), "");
}

TEST(DrawingProcess, work_that_never_ends_is_ended_and_one_sentence_says_so) {
    EXPECT_THAT(
        [] { run_in_child(compute_for_ever, 1); },
        ThrowsMessage<std::runtime_error>("the renderer did not come to an end within 1 s of the processor's time"));
}

TEST(DrawingProcess, a_crash_stays_there_and_one_sentence_says_so) {
    const auto crash = []() -> std::string {
        std::signal(SIGSEGV, SIG_DFL);  // sanitizers would take it for their own
        std::raise(SIGSEGV);
        return "";
    };
    EXPECT_THAT([&] { run_in_child(crash, 10); },
                ThrowsMessage<std::runtime_error>("the renderer crashed (Segmentation fault)"));
}

TEST(DrawingProcess, all_processes_share_the_budget_of_time) {
    DrawingBudget budget{std::chrono::seconds(30)};
    const auto work_a_little = [] {
        for (const auto start = std::clock(); std::clock() - start < CLOCKS_PER_SEC / 20;) {
        }
        return std::string();
    };
    EXPECT_EQ(sentence_of(work_a_little, budget), "no error");
    EXPECT_LT(budget.time, std::chrono::seconds(30));
    EXPECT_GT(budget.time, std::chrono::seconds(0));
    budget.time = std::chrono::milliseconds(1);
    EXPECT_EQ(sentence_of(compute_for_ever, budget),
              "the renderer did not come to an end within 1 s of the processor's time");
    EXPECT_EQ(sentence_of(work_a_little, budget), "the time for pictures is used up");
}

TEST(DrawingProcess, memory_without_end_is_refused_and_one_sentence_says_so) {
    DrawingBudget budget{std::chrono::seconds(30), std::size_t{64} << 20};
    const auto grow = []() -> std::string {
        std::vector<std::string> all;
        for (;;) all.emplace_back(1 << 20, 'x');
    };
    EXPECT_EQ(sentence_of(grow, budget), "the renderer wanted more than 64 MB of memory");
}

TEST(DrawingProcess, what_the_work_throws_comes_back_with_its_sentence) {
    EXPECT_THAT([] { run_in_child([]() -> std::string { throw std::runtime_error("no paint"); }, 10); },
                ThrowsMessage<std::runtime_error>("no paint"));
}

bool are_equal(const lottie::pictures::PictureComparison& a, const lottie::pictures::PictureComparison& b) {
    return a.frames == b.frames && a.worst_frame == b.worst_frame && a.worst.mean == b.worst.mean &&
           a.worst.share_beyond_8 == b.worst.share_beyond_8 && a.worst.ssim == b.worst.ssim &&
           a.looks_equal == b.looks_equal && a.worst_before.width == b.worst_before.width &&
           a.worst_before.pixels == b.worst_before.pixels && a.worst_after.pixels == b.worst_after.pixels;
}

TEST(DrawingProcess, a_comparison_comes_back_whole) {
    const std::string before = square_until(10);
    const std::string after = square_until(6);
    const auto came_back = compare_in_child(before, after, {7});
    EXPECT_FALSE(came_back.looks_equal);
    EXPECT_EQ(came_back.worst_before.width, 400);
    EXPECT_EQ(run_in_child(
                  [&] {
                      const auto made = compare(Animation(before), Animation(after), {7});
                      return are_equal(made, came_back) ? "the same" : "another";
                  },
                  60),
              "the same");
}

// A red pixel.
constexpr const char* kData =
    "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR4nGP4z8AAAAMBAQDJ/pLvAAAAAElFTkSuQmCC";

TEST(DrawingProcess, draws_a_picture_inside_the_animation) {
    EXPECT_FALSE(compare_in_child(with_picture(kData, true, 1), square_until(0), {}).looks_equal);
}

TEST(DrawingProcess, opens_no_file_that_an_animation_names) {
    const RedPictureBeside trap;
    EXPECT_TRUE(compare_in_child(with_picture("red.png", false, 100), square_until(0), {}).looks_equal);
}

TEST(DrawingProcess, draws_what_is_very_tall_less_wide) {
    const std::string tall = R"({"v":"5","fr":30,"ip":0,"op":2,"w":10,"h":1000000,"layers":[],"assets":[]})";
    const auto comparison = compare_in_child(tall, tall, {});
    EXPECT_EQ(comparison.worst_before.width, 1);
    EXPECT_EQ(comparison.worst_before.height, 4000);
}

TEST(DrawingProcess, an_animation_that_the_renderer_refuses_is_refused_with_its_sentence) {
    const auto draw_nothing = [] { return Animation("{}").frame_count() > 0 ? "frames" : "none"; };
    std::string sentence;
    try {
        run_in_child(draw_nothing, 60);
    } catch (const std::runtime_error& refused) {
        sentence = refused.what();
    }
    ASSERT_FALSE(sentence.empty());
    EXPECT_THAT([] { compare_in_child("{}", "{}", {}); }, ThrowsMessage<std::runtime_error>(sentence));
}

}  // namespace
