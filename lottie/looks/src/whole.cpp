// An animation after all steps against the animation before the first.
#include "whole.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "comparison.h"
#include "displacement.h"
#include "looks/lineage.h"
#include "words.h"

namespace lottie::looks {
namespace {

constexpr double kMostFrames = 600;
constexpr double kSeenOpacity = 0.19;  // percent; less than that is no half step of a channel
constexpr std::size_t kStepsPerPlace = 10;

// How far the picture of a layer, or of a composition, is off.
struct Off {
    double distance = 0;  // pixels
    double frame = 0;
    std::string layer;           // by name
    std::set<NestOfFile> blame;  // nests whose steps did it
};

class Comparer {
  public:
    Comparer(const Scene& file, Surveys& now, const std::set<NestOfFile>& slight, Lineage& lineage, Work& work)
        : file_(file, work), now_(now), slight_(slight), lineage_(lineage), work_(work) {}

    std::vector<Deviation> find() {
        for (const std::string& composition : innermost_first()) compare(composition);
        return std::move(deviations_);
    }

  private:
    // What the picture shows.
    std::vector<std::string> innermost_first() {
        std::vector<std::string> order;
        std::set<std::string> met = {""};
        std::vector<std::pair<std::string, std::size_t>> open = {{"", 0}};
        while (!open.empty()) {
            const Stack& stack = now_.find(open.back().first)->stack();
            std::size_t& next = open.back().second;
            while (next < stack.size() && !shows_new(stack.layer(next), met)) ++next;
            if (next < stack.size()) {
                met.insert(stack.layer(next).source);
                open.emplace_back(stack.layer(next++).source, 0);
            } else {
                order.push_back(open.back().first);
                open.pop_back();
            }
        }
        return order;
    }

    bool shows_new(const SceneLayer& layer, const std::set<std::string>& met) {
        return layer.type == LayerType::nest && !met.contains(layer.source) && now_.find(layer.source) != nullptr;
    }

    void compare(const std::string& composition) {
        Survey& survey = *now_.find(composition);
        Off& worst = off_[composition];
        for (std::size_t place = 0; place < survey.stack().size(); ++place) {
            const SceneLayer& layer = survey.stack().layer(place);
            if (!layer.can_draw() || layer.is_hidden) continue;
            Off one = off_of(survey, place);
            if (composition.empty() && one.distance > kUnseen)
                stray(Reason::place, one, "lies up to " + plain(one.distance) + " pixels off");
            if (one.distance > worst.distance) worst = std::move(one);
        }
    }

    Off off_of(Survey& survey, std::size_t place) {
        const SceneLayer& layer = survey.stack().layer(place);
        Off off;
        off.layer = layer.name;
        const Descent path = lineage_.path(survey.stack().id, place);
        for (const NestOfFile& link : path) {
            if (slight_.contains(link) && link != path.back()) off.blame.insert(link);
        }
        if (!off.blame.empty()) measure(survey, place, path, off);
        const auto inside = layer.type == LayerType::nest ? off_.find(layer.source) : off_.end();
        if (inside == off_.end() || inside->second.distance <= kNothing) return off;
        if (off.distance == 0) off.frame = layer.in;
        off.distance += inside->second.distance * largest_scale(survey, place);
        off.layer = inside->second.layer;
        off.blame.insert(inside->second.blame.begin(), inside->second.blame.end());
        return off;
    }

    static std::vector<double> frames_of(const Stack& stack, double from, double to) {
        const double first = stack.first_frame + std::ceil(std::max(from - stack.first_frame, 0.0) - 1e-9);
        const double end = std::min(to, stack.end_frame);
        const double step = std::max(1.0, std::floor((end - first) / kMostFrames));
        std::vector<double> frames;
        for (double frame = first; frame < end; frame += step) frames.push_back(frame);
        return frames;
    }

    double largest_scale(Survey& survey, std::size_t place) {
        double scale = 0;
        const SceneLayer& layer = survey.stack().layer(place);
        for (const double frame : frames_of(survey.stack(), layer.in, layer.out)) {
            work_.spend(1);
            const Matrix& world = survey.placement().world(place, frame);
            const Point origin = world.map({0, 0});
            for (const Point& end : {world.map({1, 0}), world.map({0, 1})})
                scale = std::max(scale, std::hypot(end.x - origin.x, end.y - origin.y));
            if (!survey.placement().moves(place)) break;
        }
        return scale;
    }

    // Where the file shows the layer at a frame.
    struct Shown {
        bool can_be_told = true;
        bool is_on = true;
        double opacity = 100;  // percent, its own
        double frame = 0;      // of its composition
        Matrix place;
    };

    Shown shown_by_file(const Descent& path, double frame) {
        Shown shown;
        shown.frame = frame;
        work_.spend(kStepsPerPlace * path.size());
        for (std::size_t i = 0; i < path.size(); ++i) {
            Survey& around = *file_.find(path[i].composition);
            const SceneLayer& link = around.stack().layer(path[i].place);
            const bool is_last = i + 1 == path.size();
            const double opacity = link.transform().opacity.at(shown.frame)[0];
            shown.is_on = shown.is_on && link.is_on(shown.frame);
            shown.can_be_told = shown.can_be_told && !link.transform().has_expression() &&
                                (is_last || (opacity > 0 && !around.stack().matte(path[i].place)));
            shown.place = around.placement().world(path[i].place, shown.frame).then(shown.place);
            if (is_last) {
                shown.opacity = opacity;
            } else {
                shown.frame = link.inner_frame(shown.frame, file_.scene().frame_rate);
            }
        }
        return shown;
    }

    // Over the frames at which the layer is seen now, and those next to them.
    void measure(Survey& survey, std::size_t place, const Descent& path, Off& off) {
        const Stack& stack = survey.stack();
        const SceneLayer& layer = stack.layer(place);
        Survey& home = *file_.find(path.back().composition);
        bool was_seen_otherwise = false;
        for (const double frame : frames_of(stack, layer.in - 1, layer.out + 1)) {
            const Shown shown = shown_by_file(path, frame);
            if (!shown.can_be_told) continue;
            const double opacity = layer.is_on(frame) ? layer.transform().opacity.at(frame)[0] : 0;
            const double before = shown.is_on ? shown.opacity : 0;
            if ((before > 0) != (opacity > 0)) {
                if (!was_seen_otherwise && std::max(before, opacity) >= kSeenOpacity) {
                    off.frame = frame;
                    if (stack.id.empty())
                        stray(Reason::trim, off, before > 0 ? "is not seen any more" : "is seen too early or too late");
                    was_seen_otherwise = true;
                }
                continue;
            }
            if (before <= 0) continue;
            const Matrix& now = survey.placement().world(place, frame);
            if (are_alike(shown.place, now)) continue;
            const double apart =
                offset_between(shown.place, now, extent(home, path.back().place, shown.frame), stack).distance;
            if (apart > off.distance) off.distance = apart, off.frame = frame;
        }
    }

    void stray(Reason reason, const Off& off, const std::string& what) {
        deviations_.push_back({{reason, Weight::change,
                                "layer " + quoted(off.layer) + " " + what + " at frame " + plain(off.frame) +
                                    " once all is flat, though no step shows by itself",
                                "", off.layer, reason == Reason::place ? "ks" : "ip", off.frame},
                               off.blame});
    }

    Surveys file_;
    Surveys& now_;
    const std::set<NestOfFile>& slight_;
    Lineage& lineage_;
    Work& work_;
    std::unordered_map<std::string, Off> off_;  // of compositions, the worst layer's
    std::vector<Deviation> deviations_;
};

}  // namespace

std::vector<Deviation> Whole::find_deviations(Surveys& now, const std::set<NestOfFile>& slight, Work& work) const {
    if (slight.empty()) return {};
    Lineage lineage(file_, work);
    for (const StackChange& step : steps_) lineage.add(step);
    return Comparer(file_, now, slight, lineage, work).find();
}

}  // namespace lottie::looks
