// One composition whose nests are un-nested as far as the look is kept.
#include "flatten/composition_work.h"

#include <algorithm>

#include "cli/shared/animation_file.h"
#include "cli/shared/selection.h"
#include "mend/mend.h"

namespace cli {
namespace {

using lottie::looks::Finding;
using lottie::looks::NestReport;
using lottie::looks::Origin;
using lottie::looks::Reason;
using lottie::looks::Verdict;
using lottie::looks::Weight;
using lottie::mend::Mending;
using Nest = lottie::mend::Workbench::Nest;

// However often compositions are shown, and however deep: more than real files need by far.
constexpr double kMostGrowth = 8;
constexpr double kAlwaysAllowedBytes = 32 << 20;
constexpr double kMostReadings = 100;
constexpr double kAlwaysReadBytes = 256 << 20;

constexpr std::size_t kStepsPerByte = 16;  // to read a composition and what was made of it, judge it and mend it

constexpr const char* kTooLarge =
    "size: the file would become too large, for the composition is shown by several nests";
constexpr const char* kTooMuchWork = "size: to make the file flat takes more work than one file may make";

std::vector<double> count_showings(const lottie::mend::Workbench& bench) {
    std::vector<std::size_t> order = bench.innermost_first();
    std::vector<double> shown(order.empty() ? 0 : *std::max_element(order.begin(), order.end()) + 1, 0);
    shown[0] = 1;
    for (auto composition = order.rbegin(); composition != order.rend(); ++composition) {
        for (const Nest& nest : bench.nests(*composition)) shown[nest.source] += shown[*composition];
    }
    return shown;
}

}  // namespace

FlatteningState::FlatteningState(const std::string& text, const host::runner::PluginModule& module,
                                 const Options& given)
    : plugin(module),
      options(given),
      limits(file_limits(given.script_time)),
      bench(text),
      judge(text, limits.work),
      shown(count_showings(bench)),
      bytes_to_read(kAlwaysReadBytes + kMostReadings * static_cast<double>(text.size())),
      most_bytes(given.max_growth ? static_cast<double>(text.size()) * (1 + *given.max_growth / 100)
                                  : std::max(kAlwaysAllowedBytes, kMostGrowth * static_cast<double>(text.size()))) {}

// The composition as a project of its own.
struct CompositionWork::Stage {
    Stage(const FlatteningState& state, std::size_t composition)
        : before(state.bench.alone(composition)),
          document(parse_input(before)),
          comp(find_composition(document, state.bench.id(composition))),
          trials(document, state.plugin, answers, state.limits) {}

    std::string before;
    lottie::document::Document document;
    host::model::Comp& comp;
    const DialogAnswers answers;
    Trials trials;
};

struct CompositionWork::Attempt {
    Trial trial;
    std::unique_ptr<Mending> mending;  // null if there was nothing to mend
    std::vector<std::string> mended_layers;
    std::vector<NestReport> reports;

    std::vector<std::string_view> layers() const {
        if (mending == nullptr) return trial.written.layers;
        return {mended_layers.begin(), mended_layers.end()};
    }
    lottie::looks::StackChange change() const { return mending == nullptr ? trial.change : mending->change(); }
    bool changes() const {
        return std::any_of(reports.begin(), reports.end(),
                           [](const NestReport& report) { return report.verdict == Verdict::changes; });
    }
};

CompositionWork::CompositionWork(FlatteningState& state, std::size_t composition)
    : state_(state), composition_(composition) {
    for (std::size_t place = 0; place < state.bench.layer_count(composition); ++place)
        place_before_.emplace_back(place);
}

std::vector<FlattenedNest> CompositionWork::work(const Places& places) {
    Places wanted;
    for (const Nest& nest : state_.bench.nests(composition_)) {
        if (!places.contains(nest.place)) continue;
        FlattenedNest& entry = entries_.emplace_back();
        entry.composition = state_.bench.id(composition_);
        entry.composition_name = state_.bench.name(composition_);
        entry.number = nest.place + 1;
        entry.name = nest.name;
        entry.layers = state_.bench.layer_count(nest.source);
        std::string reason = state_.bench.asked_for(nest.source);
        if (reason.empty()) reason = state_.bench.asked_for(composition_);
        if (reason.empty() || state_.options.all) {
            wanted.insert(nest.place);
        } else {
            keep(nest.place, std::string(code(Reason::composition_reference)) + ": " + reason);
        }
    }
    try {
        un_nest(without_large(wanted));
    } catch (const lottie::looks::TooMuchWork&) {
        for (const std::size_t place : wanted) {
            const bool is_here = std::find(place_before_.begin(), place_before_.end(), place) != place_before_.end();
            if (is_here && !entry_at(place).is_kept()) keep(place, kTooMuchWork);
        }
    }
    return std::move(entries_);
}

// Goes by how much text would come out; one nest of several that share a composition comes without growth, the last.
CompositionWork::Places CompositionWork::without_large(const Places& places) {
    Places small;
    std::map<std::size_t, std::size_t> uses;
    double bytes = static_cast<double>(state_.bench.byte_count());
    for (const Nest& nest : state_.bench.nests(composition_)) {
        if (!places.contains(nest.place)) continue;
        std::size_t& left = uses.try_emplace(nest.source, state_.bench.use_count(nest.source)).first->second;
        const double more = left > 1 ? static_cast<double>(state_.bench.layer_bytes(nest.source)) : 0;
        if (bytes + more > state_.most_bytes && left > 1) {
            keep(nest.place, kTooLarge);
            continue;
        }
        bytes += more;
        --left;
        small.insert(nest.place);
    }
    return small;
}

void CompositionWork::un_nest(Places places) {
    while (!places.empty()) {
        Attempt tried = attempt(places);
        const Refused refused = refused_of(tried, places);
        if (refused.empty()) return accept(tried);
        // What a run does to other layers is reported of each of its nests.
        if (refused.size() == places.size() && places.size() > 1) {
            const auto middle = std::next(places.begin(), static_cast<std::ptrdiff_t>(places.size() / 2));
            un_nest({places.begin(), middle});
            places.erase(places.begin(), middle);
            continue;
        }
        for (const auto& [place, reason] : refused) {
            keep(place, reason);
            places.erase(place);
        }
    }
}

CompositionWork::Attempt CompositionWork::attempt(const Places& places) {
    if (!stage_) stage_ = std::make_shared<Stage>(state_, composition_);
    state_.bytes_to_read -= static_cast<double>(stage_->before.size());
    if (state_.bytes_to_read < 0) throw lottie::looks::TooMuchWork();
    state_.limits.work->spend(kStepsPerByte * stage_->before.size());
    const auto stack = stage_->comp.stack().to_vector();
    std::vector<host::model::Layer*> nests;
    for (std::size_t i = 0; i < stack.size(); ++i) {
        if (place_before_[i] && places.contains(*place_before_[i])) nests.push_back(stack[i]);
    }
    Attempt tried{stage_->trials.run(stage_->comp, nests), nullptr, {}, {}};
    const auto judge = [&] {
        tried.reports = state_.judge.compare(tried.change(), {tried.layers(), {}, state_.bench.byte_count()});
    };
    judge();
    if (tried.changes()) {
        tried.mending = std::make_unique<Mending>(stage_->before, stage_->document.write(), tried.trial.change);
        tried.mended_layers = tried.mending->layers();
        while (tried.changes() && tried.mending->answer(tried.reports)) {
            tried.mended_layers = tried.mending->layers();
            judge();
        }
    }
    stage_->trials.undo();
    for (const NestReport& report : tried.reports) {
        FlattenedNest& entry = entry_at(*place_before_[report.nest]);
        entry.verdict = report.verdict;
        entry.findings = report.findings;
        entry.mended = tried.mending ? tried.mending->mended(report.nest) : std::vector<Reason>();
    }
    return tried;
}

CompositionWork::Refused CompositionWork::refused_of(const Attempt& tried, const Places& places) {
    Refused refused;
    double unseen = 0;
    for (const NestReport& report : tried.reports) {
        const std::size_t place = *place_before_[report.nest];
        if (state_.options.all) continue;
        // What nobody sees of one nest adds up over several, and over the times that the picture shows them.
        const double more = report.unseen * state_.shown[composition_];
        if (report.verdict > (state_.options.exact ? Verdict::exact : Verdict::equal_to_the_eye)) {
            refused.emplace(place, main_reason(report.findings));
        } else if (more > 0 && unseen + more > state_.unseen_left) {
            refused.emplace(place,
                            main_reason(report.findings) + ", but the eye would see what this and others add up to");
        } else {
            unseen += more;
        }
    }
    if (refused.empty()) {
        for (const std::size_t place : too_large(tried, places)) refused.emplace(place, kTooLarge);
    }
    return refused;
}

// Half of the shared ones if the result is too large after all; more if that is not enough.
std::vector<std::size_t> CompositionWork::too_large(const Attempt& tried, const Places& places) {
    double bytes =
        static_cast<double>(state_.bench.byte_count()) - static_cast<double>(state_.bench.layer_bytes(composition_));
    for (const std::string_view layer : tried.layers()) bytes += static_cast<double>(layer.size() + 1);
    std::vector<std::size_t> shared;
    std::map<std::size_t, std::size_t> used_here;
    for (const Nest& nest : state_.bench.nests(composition_)) {
        const auto place = place_before_[nest.place];
        if (!place || !places.contains(*place)) continue;
        const std::size_t uses = state_.bench.use_count(nest.source);
        if (uses > 1) shared.push_back(*place);
        if (++used_here[nest.source] == uses) bytes -= static_cast<double>(state_.bench.layer_bytes(nest.source));
    }
    if (bytes <= state_.most_bytes) return {};
    return {shared.begin() + static_cast<std::ptrdiff_t>(shared.size() / 2), shared.end()};
}

void CompositionWork::accept(Attempt& tried) {
    state_.judge.accept();
    for (const NestReport& report : tried.reports) state_.unseen_left -= report.unseen * state_.shown[composition_];
    const lottie::looks::StackChange change = tried.change();
    state_.bench.put_back(composition_, change, tried.layers());
    std::vector<std::optional<std::size_t>> now;
    for (const Origin& origin : change.after)
        now.push_back(origin.kind == Origin::Kind::kept ? place_before_[origin.layer] : std::nullopt);
    place_before_ = std::move(now);
    stage_.reset();
}

void CompositionWork::keep(std::size_t place, const std::string& reason) {
    entry_at(place).kept_because = reason;
}

FlattenedNest& CompositionWork::entry_at(std::size_t place) {
    return *std::find_if(entries_.begin(), entries_.end(),
                         [&](const FlattenedNest& entry) { return entry.number == place + 1; });
}

}  // namespace cli
