// One nest before the run and its layers after it: what all findings look at.
#include "unnesting.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace lottie::looks {
namespace {

constexpr std::size_t kMostFrames = 600;

const Stack& stack_named(const Scene& scene, const std::string& id) {
    const Stack* stack = scene.find(id);
    if (stack == nullptr) throw std::invalid_argument("the animation has no composition " + quoted(id));
    return *stack;
}

const Stack& inside_of(const Scene& scene, const Stack& stack, std::size_t nest) {
    if (nest >= stack.layers.size() || stack.layers[nest].type != LayerType::nest) {
        throw std::invalid_argument("the composition has no such nest");
    }
    return stack_named(scene, stack.layers[nest].source);
}

}  // namespace

Unnesting::Unnesting(const Scene& before, const Scene& after, const StackChange& change, std::size_t nest)
    : before_(before),
      after_(after),
      change_(change),
      stack_(stack_named(before, change.composition)),
      result_(stack_named(after, change.composition)),
      nest_place_(nest),
      inside_(inside_of(before, stack_, nest)),
      copy_of_(inside_.layers.size()),
      kept_at_(stack_.layers.size()),
      extents_(before),
      result_placement_(result_) {
    if (change.after.size() != result_.layers.size()) {
        throw std::invalid_argument("the composition after the run has another number of layers");
    }
    for (std::size_t i = 0; i < change.after.size(); ++i) {
        const Origin& origin = change.after[i];
        if (origin.kind == Origin::Kind::kept) kept_at_.at(origin.layer) = i;
        if (origin.kind != Origin::Kind::copied || origin.nest != nest) continue;
        copy_of_.at(origin.layer) = i;
        copies_.push_back({origin.layer, i});
    }
    nest_frames_ =
        whole_frames(std::max(stack_.first_frame, this->nest().in), std::min(stack_.end_frame, this->nest().out));
    stack_frames_ = whole_frames(stack_.first_frame, stack_.end_frame);
}

bool Unnesting::is_unnested(std::size_t place_before) const {
    return std::find(change_.nests.begin(), change_.nests.end(), place_before) != change_.nests.end();
}

// Players show the frames that lie whole numbers behind the first one.
std::vector<double> Unnesting::whole_frames(double from, double to) const {
    const double first = std::ceil(from - stack_.first_frame - 1e-9);
    const double count = std::ceil(to - stack_.first_frame - 1e-9) - first;
    std::vector<double> frames;
    if (!(count >= 1)) return frames;
    const double step = std::max(1.0, count / static_cast<double>(kMostFrames));
    for (double k = 0; k < count; k += step) frames.push_back(stack_.first_frame + first + std::floor(k));
    const double last = stack_.first_frame + first + count - 1;
    if (frames.back() != last) frames.push_back(last);
    if (step > 1) add_edges(frames);
    return frames;
}

// Frames just before and at the times where layers out of the nest begin and end, within those that are there.
void Unnesting::add_edges(std::vector<double>& frames) const {
    std::vector<double> edges;
    for (const Copy& copy : copies_) {
        edges.insert(edges.end(), {copied(copy).in, copied(copy).out});
        if (!has_time_remap()) edges.insert(edges.end(), {outer_frame(inner(copy).in), outer_frame(inner(copy).out)});
    }
    const double first = frames.front();
    const double last = frames.back();
    for (const double edge : edges) {
        const double at = stack_.first_frame + std::ceil(edge - stack_.first_frame - 1e-9);
        for (const double frame : {at - 1, at}) {
            if (first <= frame && frame <= last) frames.push_back(frame);
        }
    }
    std::sort(frames.begin(), frames.end());
    frames.erase(std::unique(frames.begin(), frames.end()), frames.end());
    if (frames.size() > 2 * kMostFrames) {  // a nest with very many layers
        const std::size_t step = frames.size() / kMostFrames;
        std::size_t kept = 0;
        for (std::size_t i = 0; i < frames.size(); i += step) frames[kept++] = frames[i];
        frames.resize(kept);
    }
}

std::vector<Finding> Unnesting::take_findings() {
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const Finding& a, const Finding& b) { return a.reason < b.reason; });
    return std::move(findings_);
}

std::string layers_named(const std::string& first, std::size_t count) {
    if (count <= 1) return "layer " + quoted(first);
    return "layers " + quoted(first) + " and " + std::to_string(count - 1) + " more";
}

std::string in_number(std::size_t count, const char* one, const char* several) {
    return count > 1 ? several : one;
}

std::string plain(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", number);
    std::string result = text;
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.') result.pop_back();
    return result == "-0" ? "0" : result;
}

}  // namespace lottie::looks
