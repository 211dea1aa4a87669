// Two animations frame by frame: where they differ most, and whether the eye sees it.
#include "pictures/comparison.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace lottie::pictures {
namespace {

constexpr int kWidth = 400;       // pixels; what the limits were measured at
constexpr int kMaxHeight = 4000;  // pixels; what is taller is drawn less wide
constexpr int kMaxFrames = 10'000'000;
constexpr int kFewFrames = 150;   // so many are all drawn
constexpr int kCombFrames = 100;  // of a longer animation
constexpr int kPeaks = 3;         // so many of the worst frames are looked at more closely
constexpr int kFiner = 16;        // each time, by a comb with so many teeth for one

constexpr double kMean = 0.1;
constexpr double kShare = 0.001;
constexpr double kSsim = 0.998;

// How many times over the limit; at most 1 looks equal.
double badness(const Difference& d) {
    return std::max({d.mean / kMean, d.share_beyond_8 / kShare, (1 - d.ssim) / (1 - kSsim)});
}

class Search {
  public:
    Search(const Animation& before, const Animation& after)
        : before_(before),
          after_(after),
          count_(std::min({before.frame_count(), after.frame_count(), kMaxFrames})),
          scale_(std::min(double{kWidth} / std::max(1, before.width()),
                          double{kMaxHeight} / std::max(1, before.height()))),
          width_(scaled(before.width())),
          height_(scaled(before.height())) {}

    PictureComparison search(const std::vector<int>& look_at) {
        const int step = count_ <= kFewFrames ? 1 : std::max(1, count_ / kCombFrames);
        for (int frame = 0; frame < count_; frame += step) look(frame);
        if (count_ > 0) look(count_ - 1);
        for (const int frame : look_at) look(frame);
        for (int gap = step; gap > 1; gap = std::max(1, gap / kFiner)) look_closely(gap);
        return result();
    }

  private:
    int scaled(int length) const { return std::max(1, static_cast<int>(std::lround(scale_ * length))); }

    // At what lies around the peaks, up to the next frames that were drawn.
    void look_closely(int gap) {
        const int finer = std::max(1, gap / kFiner);
        for (const int peak : peaks()) {
            for (int frame = peak - gap; frame <= peak + gap; frame += finer) look(frame);
        }
    }

    void look(int frame) {
        if (frame < 0 || frame >= count_ || seen_.contains(frame)) return;
        seen_[frame] = difference(draw(before_, frame), draw(after_, frame));
    }

    Picture draw(const Animation& animation, int frame) const { return animation.frame(frame, width_, height_); }

    std::vector<int> peaks() const {
        std::vector<int> frames;
        for (const auto& [frame, unused] : seen_) frames.push_back(frame);
        std::stable_sort(frames.begin(), frames.end(),
                         [this](int a, int b) { return badness(seen_.at(a)) > badness(seen_.at(b)); });
        frames.resize(std::min<std::size_t>(frames.size(), kPeaks));
        return frames;
    }

    PictureComparison result() const {
        PictureComparison comparison;
        comparison.frames = static_cast<int>(seen_.size());
        for (const auto& [frame, d] : seen_) {
            if (frame != seen_.begin()->first && badness(d) <= badness(comparison.worst)) continue;
            comparison.worst_frame = frame;
            comparison.worst = d;
        }
        comparison.looks_equal = looks_equal(comparison.worst);
        if (seen_.empty()) return comparison;
        comparison.worst_before = draw(before_, comparison.worst_frame);
        comparison.worst_after = draw(after_, comparison.worst_frame);
        return comparison;
    }

    const Animation& before_;
    const Animation& after_;
    int count_;
    double scale_;
    int width_;
    int height_;
    std::map<int, Difference> seen_;
};

}  // namespace

bool looks_equal(const Difference& difference) {
    return badness(difference) <= 1;
}

PictureComparison compare(const Animation& before, const Animation& after, const std::vector<int>& look_at) {
    return Search(before, after).search(look_at);
}

}  // namespace lottie::pictures
