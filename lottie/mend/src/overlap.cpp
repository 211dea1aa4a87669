// Applies to nests without masks or a matte of their own that fade while layers lie over one another: masks take from
// each layer what an opaque one above it covers, as long as the nest is between seen and unseen. Then no layer shows
// through another, as none did in the group.
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "cut.h"
#include "remedies.h"

namespace lottie::mend {
namespace {

constexpr std::size_t kStepsPerPair = 100;
// Each is worked out at each frame, and judged there.
constexpr std::size_t kMostCovers = 200;
constexpr std::size_t kMostCoversByFrames = 20'000;

class Overlap {
  public:
    Overlap(Unnested& unnested, Nest& nest)
        : unnested_(unnested),
          evaluation_(unnested.evaluation()),
          nest_(nest),
          around_(unnested.composition()),
          inside_(nest.source) {}

    // False if one of them cannot be told, or cannot be taken away, or if nothing helps.
    bool find_covers() {
        const auto frames = evaluation_.frames(around_, nest_.facts().in.value_or(0), nest_.facts().out.value_or(0));
        for (const double frame : frames) {
            const double opacity = evaluation_.opacity(around_, nest_.place, frame);
            if (opacity <= 0 || opacity >= 100) continue;
            if (evaluation_.is_large_fade(around_, nest_.place, frame) ||
                !find_covers_at(evaluation_.inner_frame(around_, nest_.place, frame)) ||
                count_ * frames.size() > kMostCoversByFrames) {
                return false;
            }
        }
        return true;
    }

  private:
    bool find_covers_at(double frame) {
        for (CopiedLayer& below : nest_.copies) {
            if (!is_seen(below, frame)) continue;
            unnested_.spend(kStepsPerPair * below.inner);
            for (std::size_t above = 0; above < below.inner; ++above) {
                if (!is_seen(nest_.copies[above], frame)) continue;
                const bool is_opaque = evaluation_.opacity(inside_, above, frame) >= 100;
                if (is_opaque && is_covered(below, above)) continue;
                if (!evaluation_.may_overlap(inside_, above, below.inner, frame)) continue;
                if (!is_opaque || !add_cover(below, above)) return false;
            }
        }
        return true;
    }

    bool is_seen(const CopiedLayer& copy, double frame) {
        return is_drawn(copy) && evaluation_.is_on(inside_, copy.inner, frame);
    }

    static bool is_covered(const CopiedLayer& below, std::size_t above) {
        return std::any_of(below.covers.begin(), below.covers.end(),
                           [&](const CopiedLayer::Cover& cover) { return cover.above == above; });
    }

    bool add_cover(CopiedLayer& below, std::size_t above) {
        const bool can_be_told = !below.before.is_set("hasMask") && !matte_inside(nest_, below) &&
                                 !matte_inside(nest_, nest_.copies[above]) &&
                                 evaluation_.has_reliable_placement(inside_, below.inner) &&
                                 evaluation_.has_reliable_placement(inside_, above);
        if (!can_be_told) return false;
        const auto [found, is_new] = areas_.try_emplace(above);
        auto& areas = found->second;
        if (is_new) areas = evaluation_.areas_at_any_opacity(inside_, above);
        for (const auto& area : areas) below.covers.push_back({above, area});
        count_ += areas.size();
        return !areas.empty() && count_ <= kMostCovers;
    }

    Unnested& unnested_;
    looks::Evaluation& evaluation_;
    Nest& nest_;
    const std::string around_;
    const std::string inside_;
    std::size_t count_ = 0;                                              // of covers
    std::map<std::size_t, std::vector<looks::Evaluation::Area>> areas_;  // of layers inside that cover others
};

}  // namespace

void mend_overlap(Unnested& unnested, Nest& nest) {
    if (nest.matte || nest.layer.before.is_set("hasMask") || unnested.matte_in_stack(nest.place) ||
        !unnested.evaluation().has_reliable_placement(unnested.composition(), nest.place)) {
        return;
    }
    if (Overlap(unnested, nest).find_covers()) return cut_layers(unnested, nest, FrameCut::where_needed);
    for (CopiedLayer& copy : nest.copies) copy.covers.clear();
}

}  // namespace lottie::mend
