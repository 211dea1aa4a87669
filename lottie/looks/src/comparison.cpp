// One composition before a run and after it: what all findings look at.
#include "comparison.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "words.h"

namespace lottie::looks {
namespace {

constexpr std::size_t kMostFrames = 600;

Survey& survey_of(Surveys& surveys, const std::string& id) {
    Survey* survey = surveys.find(id);
    if (survey == nullptr) throw std::invalid_argument("the animation has no composition " + quoted(id));
    return *survey;
}

}  // namespace

Comparison::Comparison(Surveys& before, std::shared_ptr<const Stack> result, const StackChange& change,
                       const RewrittenStack& rewritten, Work& work)
    : before_(before),
      change_(change),
      rewritten_(rewritten),
      work_(work),
      survey_(survey_of(before, change.composition)),
      result_(std::move(result), work),
      kept_at_(stack().size()),
      is_unnested_(stack().size(), false),
      lies_as_before_(stack().size(), Answer::unknown) {
    if (change.after.size() != this->result().size()) {
        throw std::invalid_argument("the composition after the run has another number of layers");
    }
    work.spend(stack().size() + change.after.size());
    for (const std::size_t nest : change.nests) {
        if (nest >= stack().size()) throw std::invalid_argument("the composition has no such nest");
        is_unnested_[nest] = true;
    }
    for (std::size_t i = 0; i < change.after.size(); ++i) {
        const Origin& origin = change.after[i];
        if (origin.kind == Origin::Kind::kept) kept_at_.at(origin.layer) = i;
        if (origin.kind == Origin::Kind::copied) copies_[origin.nest].push_back({origin.layer, i});
    }
    // What shows the composition may go on when its layers have ended, and those that came out may not have.
    const double end = stack().id.empty() ? stack().end_frame : std::max(stack().end_frame, this->result().end_frame);
    frames_ = whole_frames(stack().first_frame, end, change.nests);
}

const std::vector<Copy>& Comparison::copies(std::size_t nest) const {
    static const std::vector<Copy> kNone;
    const auto found = copies_.find(nest);
    return found == copies_.end() ? kNone : found->second;
}

bool Comparison::lies_as_before(std::size_t place) {
    const auto own = kept_at_[place];
    if (own && !stack().parent(place) && !result().parent(*own)) {
        return stack().layer(place).has_same_transform(result().layer(*own));
    }
    std::vector<std::size_t> chain;
    std::optional<std::size_t> at = place;
    bool is_same = true;
    while (at && lies_as_before_[*at] == Answer::unknown) {
        chain.push_back(*at);
        const auto kept = kept_at_[*at];
        const auto parent = stack().parent(*at);
        is_same = kept && stack().layer(*at).has_same_transform(result().layer(*kept)) &&
                  result().parent(*kept) == (parent ? kept_at_[*parent] : std::nullopt) &&
                  (!parent || kept_at_[*parent]);
        if (!is_same) break;
        at = parent;
    }
    if (is_same && at) is_same = lies_as_before_[*at] == Answer::yes;
    for (const std::size_t link : chain) lies_as_before_[link] = is_same ? Answer::yes : Answer::no;
    return lies_as_before_[place] == Answer::yes;
}

std::vector<double> Comparison::frames_of_nest(std::size_t nest) const {
    const SceneLayer& layer = stack().layer(nest);
    return whole_frames(std::max(stack().first_frame, layer.in), std::min(stack().end_frame, layer.out), {nest});
}

// Players show the frames that lie whole numbers behind the first one.
std::vector<double> Comparison::whole_frames(double from, double to, const std::vector<std::size_t>& nests) const {
    const double start = stack().first_frame;
    const double first = std::ceil(from - start - 1e-9);
    const double count = std::ceil(to - start - 1e-9) - first;
    std::vector<double> frames;
    if (!(count >= 1)) return frames;
    const double step = std::max(1.0, count / static_cast<double>(kMostFrames));
    for (double k = 0; k < count; k += step) frames.push_back(start + first + std::floor(k));
    const double last = start + first + count - 1;
    if (frames.back() != last) frames.push_back(last);
    if (step > 1) add_edges(frames, nests);
    return frames;
}

// Frames just before and at the times where layers out of the nests begin and end, within those that are there.
void Comparison::add_edges(std::vector<double>& frames, const std::vector<std::size_t>& nests) const {
    std::vector<double> edges;
    for (const std::size_t place : nests) {
        const SceneLayer& nest = stack().layer(place);
        const auto* inside = before().find(nest.source);
        for (const Copy& copy : copies(place)) {
            edges.insert(edges.end(), {result().layer(copy.result).in, result().layer(copy.result).out});
            if (nest.time_remap() || inside == nullptr || copy.inner >= (*inside)->size()) continue;
            const SceneLayer& inner = (*inside)->layer(copy.inner);
            edges.insert(edges.end(), {nest.start + nest.stretch * inner.in, nest.start + nest.stretch * inner.out});
        }
    }
    const double first = frames.front();
    const double last = frames.back();
    for (const double edge : edges) {
        const double at = stack().first_frame + std::ceil(edge - stack().first_frame - 1e-9);
        for (const double frame : {at - 1, at}) {
            if (first <= frame && frame <= last) frames.push_back(frame);
        }
    }
    std::sort(frames.begin(), frames.end());
    frames.erase(std::unique(frames.begin(), frames.end()), frames.end());
    if (frames.size() > 2 * kMostFrames) {  // nests with very many layers
        const std::size_t step = frames.size() / kMostFrames;
        std::size_t kept = 0;
        for (std::size_t i = 0; i < frames.size(); i += step) frames[kept++] = frames[i];
        frames.resize(kept);
    }
}

bool Comparison::is_composition_known(const std::string& name) const {
    const auto found = before().nest_names.find(name);
    return before().main().name == name || (found != before().nest_names.end() && found->second > 0);
}

bool Comparison::is_name_of_this_composition(const std::string& name) {
    if (stack().id.empty()) return before().main().name == name;
    if (!names_) {
        names_.emplace();
        for (const auto& [id, around] : before().stacks) {
            spend(around->size());
            for (std::size_t i = 0; i < around->size(); ++i) {
                if (around->layer(i).source == stack().id) names_->insert(around->layer(i).name);
            }
        }
    }
    return names_->contains(name);
}

bool Comparison::is_composition_known_after(const std::string& name) {
    if (before().main().name == name) return true;
    if (!more_nests_named_) {
        more_nests_named_.emplace();
        const auto count = [this](const Stack& stack, int each) {
            for (std::size_t i = 0; i < stack.size(); ++i) {
                if (stack.layer(i).type == LayerType::nest) (*more_nests_named_)[stack.layer(i).name] += each;
            }
        };
        count(result(), 1);
        count(stack(), -1);
        for (const std::string& id : rewritten_.deleted) {
            const auto* deleted = before().find(id);
            if (deleted != nullptr) count(**deleted, -1);
        }
    }
    const auto found = before().nest_names.find(name);
    const auto more = more_nests_named_->find(name);
    const auto count = found == before().nest_names.end() ? 0 : static_cast<std::ptrdiff_t>(found->second);
    return count + (more == more_nests_named_->end() ? 0 : more->second) > 0;
}

}  // namespace lottie::looks
