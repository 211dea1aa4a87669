// The layers of a composition and of all that its nests show, on one timeline.
#include "report/layer_tree.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <memory>
#include <optional>
#include <unordered_map>

#include "cli/shared/selection.h"
#include "model/error.h"
#include "shared/layer_facts.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;

constexpr std::size_t kMostInside = 1000;  // layers in nests
constexpr std::size_t kMostLevels = 8;     // of nests in nests
constexpr std::size_t kMostSpans = 12;     // of a layer
constexpr double kMostMoments = 1000;      // at which a remapped clock is read
constexpr double kMostCounted = 1e9;
constexpr double kSame = 1e-6;  // seconds

// Joined with the last one where it goes on, or where there are too many.
void add(std::vector<Span>& spans, Span span) {
    if (span.second - span.first < kSame) return;
    if (!spans.empty() && (span.first - spans.back().second < kSame || spans.size() == kMostSpans)) {
        spans.back().second = std::max(spans.back().second, span.second);
    } else {
        spans.push_back(span);
    }
}

// When a nest shows what of its composition; in seconds.
class NestTimes {
  public:
    explicit NestTimes(Layer& nest)
        : in_(seconds(nest.in_point())),
          out_(in_ + seconds(nest.duration())),
          start_(seconds(nest.offset())),
          stretch_(nest.stretch()) {
        if (nest.has_flag(host::model::kTimeRemap) && out_ > in_) read_clock(nest);
    }

    bool is_known() const { return is_known_; }

    // In the order of time.
    std::vector<Span> when(const Span& inner) const {
        std::vector<Span> spans;
        if (!is_known_) {
            add(spans, {in_, out_});
        } else if (moments_.empty()) {
            const auto [from, to] = std::minmax({start_ + stretch_ * inner.first, start_ + stretch_ * inner.second});
            add(spans, {std::max(from, in_), std::min(to, out_)});
        } else {
            for (std::size_t i = 0; i < moments_.size(); ++i) {
                if (moments_[i] < inner.first - kSame || moments_[i] >= inner.second - kSame) continue;
                const double at = in_ + step_ * static_cast<double>(i);
                add(spans, {at, std::min(at + step_, out_)});
            }
        }
        return spans;
    }

  private:
    // Frame by frame, as players do.
    void read_clock(Layer& nest) try {
        const host::model::Stream& clock = nest.stream(host::model::kTimeRemapStream);
        is_known_ = !clock.has_expression();
        const double frame = seconds(nest.comp().frame_duration());
        const double count = std::ceil((out_ - in_) / frame - kSame);
        step_ = frame * std::max(1.0, std::ceil(count / kMostMoments));
        for (double at = in_; is_known_ && at < out_ - kSame; at += step_)
            moments_.push_back(clock.value_at(host::model::from_seconds(at) - nest.offset()).n[0]);
    } catch (const host::model::Error&) {
        is_known_ = false;
    }

    double in_, out_, start_, stretch_;
    double step_ = 0;
    std::vector<double> moments_;  // what it shows at each, if time is remapped
    bool is_known_ = true;
};

class TreeMaker {
  public:
    TreeMaker(const lottie::document::Document& document, const Comp& comp, lottie::looks::Lineage* lineage)
        : document_(document), comp_(comp), lineage_(lineage) {}

    // The outer levels of all nests come before the inner ones of any.
    std::vector<TreeLayer> make() {
        std::vector<TreeLayer> tree;
        add_layers(comp_, nullptr, "", tree);
        for (; !open_.empty(); open_.pop_front()) look_into(open_.front());
        return tree;
    }

  private:
    // A nest of the tree, with those around it.
    struct Nest {
        std::shared_ptr<const Nest> around;
        std::size_t level;
        NestTimes times;

        bool is_known() const { return times.is_known() && (around == nullptr || around->is_known()); }
        std::vector<Span> when(const Span& inner) const {
            std::vector<Span> spans = times.when(inner);
            if (around == nullptr) return spans;
            std::vector<Span> all;
            for (const Span& span : spans) {
                for (const Span& outer : around->when(span)) all.push_back(outer);
            }
            std::sort(all.begin(), all.end());
            spans.clear();
            for (const Span& span : all) add(spans, span);
            return spans;
        }
    };
    struct Open {
        Layer* layer;
        TreeLayer* shown;
        std::shared_ptr<const Nest> around;
    };

    void look_into(const Open& open) {
        const Comp& inner = *open.layer->source()->comp();
        const auto count = static_cast<std::size_t>(inner.layer_count());
        const std::size_t level = open.around == nullptr ? 1 : open.around->level + 1;
        if (count == 0) return;
        if (level > kMostLevels || count > room_) {
            open.shown->left_out = count_layers(inner);
            return;
        }
        room_ -= count;
        const auto nest = std::make_shared<const Nest>(Nest{open.around, level, NestTimes(*open.layer)});
        add_layers(inner, nest, open.shown->from, open.shown->layers);
    }

    void add_layers(const Comp& comp, const std::shared_ptr<const Nest>& nest, const std::string& nest_from,
                    std::vector<TreeLayer>& layers) {
        const std::vector<Layer*> stack = comp.stack().to_vector();
        layers.resize(stack.size());
        for (std::size_t place = 0; place < stack.size(); ++place) {
            Layer& layer = *stack[place];
            TreeLayer& shown = layers[place];
            shown.name = layer.display_name();
            shown.type = type_of(document_, layer);
            shown.in = frames(comp, layer.in_point());
            shown.out = frames(comp, layer.in_point() + layer.duration());
            shown.is_off = !layer.has_flag(host::model::kVideoActive);
            if (lineage_ != nullptr && (nest == nullptr || !nest_from.empty()))
                shown.from = from(comp, place, nest_from);
            if (nest == nullptr) {
                shown.shown = {{shown.in, shown.out}};
            } else {
                shown.is_placed = nest->is_known();
                const double in = seconds(layer.in_point());
                for (const Span& span : nest->when({in, in + seconds(layer.duration())}))
                    shown.shown.emplace_back(frames(comp_, host::model::from_seconds(span.first)),
                                             frames(comp_, host::model::from_seconds(span.second)));
            }
            if (is_nest(layer)) open_.push_back({&layer, &shown, nest});
        }
    }

    std::string from(const Comp& comp, std::size_t place, const std::string& nest_from) const {
        std::string numbers = nest_from;
        for (const auto& link : lineage_->path(document_.comp_id(comp), place, kMostLevels + 1))
            numbers += (numbers.empty() ? "" : ".") + std::to_string(link.place + 1);
        return numbers == nest_from ? "" : numbers;
    }

    // At all levels; a number for people.
    double count_layers(const Comp& outermost) {
        std::vector<const Comp*> open = {&outermost};
        while (!open.empty()) {
            const Comp& comp = *open.back();
            double count = comp.layer_count();
            const std::size_t waiting = open.size();
            for (const Layer* nest : counts_.contains(&comp) ? std::vector<Layer*>() : nests_of(comp)) {
                const Comp* inner = nest->source()->comp();
                const auto known = counts_.find(inner);
                if (known == counts_.end()) {
                    open.push_back(inner);
                } else {
                    count = std::min(count + known->second, kMostCounted);
                }
            }
            if (open.size() > waiting) continue;
            counts_.emplace(&comp, count);
            open.pop_back();
        }
        return counts_.at(&outermost);
    }

    const lottie::document::Document& document_;
    const Comp& comp_;
    lottie::looks::Lineage* lineage_;
    std::size_t room_ = kMostInside;
    std::deque<Open> open_;
    std::unordered_map<const Comp*, double> counts_;
};

}  // namespace

std::vector<TreeLayer> layer_tree(const lottie::document::Document& document, const Comp& comp,
                                  lottie::looks::Lineage* lineage) {
    return TreeMaker(document, comp, lineage).make();
}

}  // namespace cli
