// One composition, its nests un-nested as far as it keeps its look.
#include "flatten/composition_work.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "cli/shared/animation_file.h"
#include "cli/shared/selection.h"
#include "document/outline_reader.h"
#include "mend/mend.h"

namespace cli {
namespace {

using lottie::looks::Finding;
using lottie::looks::NestReport;
using lottie::looks::Origin;
using lottie::looks::Reason;
using lottie::looks::Verdict;
using lottie::mend::Mending;
using lottie::mend::Workbench;

// However often compositions are shown, and however deep: far more than real files need.
constexpr double kMostGrowth = 8;
constexpr double kAlwaysAllowedBytes = 8 << 20;
constexpr double kMostReadings = 100;
constexpr double kAlwaysReadBytes = 256 << 20;

constexpr std::size_t kStepsPerStage = 75'000;  // to make a project with scripts of its own
constexpr std::size_t kStepsPerByte = 4;        // to read a composition
constexpr std::size_t kPairsPerStep = 4;        // of layers that remedies compare

constexpr const char* kTooLarge =
    "size: the file would become too large, for the composition is shown by several nests";
constexpr const char* kTooMuchWork = "size: to make the file flat takes more work than one file may make";

}  // namespace

FlatteningState::FlatteningState(const std::string& text, const host::runner::PluginModule& module,
                                 const Options& given, lottie::packed::References given_references,
                                 const FileLimits& file_limits, const Learned& before)
    : plugin(module),
      options(given),
      references(std::move(given_references)),
      limits(file_limits),
      learned(before),
      bench(text),
      judge(text, limits.work),
      mends_unseen(before.unseen != Learned::Unseen::allowed),
      unseen_left(before.unseen < Learned::Unseen::allowed_at_end ? 1 : 0),
      bytes_to_read(kAlwaysReadBytes + kMostReadings * static_cast<double>(text.size())),
      most_bytes(given.max_growth ? static_cast<double>(text.size()) * (1 + *given.max_growth / 100)
                                  : std::max(kAlwaysAllowedBytes, kMostGrowth * static_cast<double>(text.size()))) {
    count_showings();
    for (const std::size_t composition : bench.innermost_first()) {
        for (const Workbench::Nest& nest : bench.nests(composition))
            origins.emplace(lottie::looks::NestOfFile{bench.id(composition), nest.place}, nest.origin);
    }
}

void FlatteningState::count_showings() {
    const std::vector<std::size_t> order = bench.innermost_first();
    // Those that are not shown any more keep their places.
    shown.assign(std::max(shown.size(), *std::max_element(order.begin(), order.end()) + 1), 0);
    shown[0] = 1;
    for (auto composition = order.rbegin(); composition != order.rend(); ++composition) {
        for (const Workbench::Nest& nest : bench.nests(*composition)) shown[nest.source] += shown[*composition];
    }
}

std::map<std::size_t, std::string> FlatteningState::find_deviating_nests() {
    std::set<lottie::looks::NestOfFile> suspects;
    for (const auto& [nest, origin] : origins) {
        if (slight.contains(origin)) suspects.insert(nest);
    }
    std::map<std::size_t, std::string> deviating;
    try {
        for (const lottie::looks::Deviation& one : judge.compare_whole(suspects)) {
            for (const auto& nest : one.nests) deviating.emplace(origins.at(nest), main_reason({one.finding}));
        }
    } catch (const lottie::looks::TooMuchWork&) {
        for (const std::size_t origin : slight) deviating.emplace(origin, kTooMuchWork);
    }
    return deviating;
}

void FlatteningState::find_referenced_layers(const lottie::document::Document& document) {
    const ReferencedLayers referenced(document, references);
    for (const std::string& name : references.layers) {
        double count = 0;
        for (const host::model::Comp* home : referenced.homes(name)) {
            const std::size_t composition = *bench.find(document.comp_id(*home));
            if (composition < shown.size()) count += shown[composition];
        }
        if (count > 0) layer_names[name] = name;
        if (count == 1) single.insert(name);
    }
}

void FlatteningState::rename(const std::string& before, const std::string& now) {
    const auto original = layer_names.extract(before);
    if (original.empty()) return;
    layer_names[now] = original.mapped();
    single.erase(before);
    single.insert(now);
    references.layers.erase(before);
    references.layers.insert(now);
}

// The composition as a project of its own.
struct CompositionWork::Stage {
    Stage(const FlatteningState& state, std::size_t composition)
        : before(state.bench.extract(composition)),
          outline(lottie::document::read_known_outline(before)),
          document(parse_input(before, outline)),
          comp(find_composition(document, state.bench.id(composition))),
          trials(document, state.plugin, answers, state.limits, state.references) {}

    std::string before;
    lottie::document::DocumentOutline outline;
    lottie::document::Document document;
    host::model::Comp& comp;
    const lottie::mend::BeforeRuns& unmended(lottie::looks::Judge& judge) {
        if (!unmended_) unmended_.emplace(before, outline, judge);
        return *unmended_;
    }

    const DialogAnswers answers;
    Trials trials;

  private:
    std::optional<lottie::mend::BeforeRuns> unmended_;  // made when there is something to mend
};

struct CompositionWork::Attempt {
    Trial trial;
    std::unique_ptr<Mending> mending;  // null if there was nothing to mend
    std::vector<std::string> mended_layers;
    std::vector<NestReport> reports;
    std::vector<NestReport> unmended;            // the same nests before anything was mended; empty if nothing was
    bool mends_unseen = false;                   // not only what can be seen
    std::map<std::string, std::string> renamed;  // layers that state machines refer to
    std::vector<Finding> losses;                 // to those and to themes

    std::vector<std::string_view> layers() const {
        if (mending == nullptr) return trial.written.layers;
        return {mended_layers.begin(), mended_layers.end()};
    }
    lottie::looks::StackChange change() const { return mending == nullptr ? trial.change : mending->change(); }

    // Why a nest cannot go: what mending left as it was and what state machines and themes lose or, if only what else
    // mending brought is in the way, what it was to mend.
    std::vector<Finding> causes(std::size_t report) const {
        const std::vector<Finding>& now = reports[report].findings;
        if (unmended.empty()) return now;
        const std::vector<Finding>& before = unmended[report].findings;
        std::vector<Finding> left;
        std::copy_if(now.begin(), now.end(), std::back_inserter(left), [&before](const Finding& finding) {
            if (finding.reason == Reason::interaction) return true;
            const auto is_same = [&finding](const Finding& one) { return one.reason == finding.reason; };
            return std::any_of(before.begin(), before.end(), is_same);
        });
        return verdict_of(left) == reports[report].verdict ? left : before;
    }
};

CompositionWork::CompositionWork(FlatteningState& state, std::size_t composition)
    : state_(state), composition_(composition), next_layer_(state.bench.layer_count(composition)) {
    std::vector<std::size_t> layers;
    for (std::size_t layer = 0; layer < next_layer_; ++layer) layers.push_back(layer);
    set_stack(std::move(layers));
}

void CompositionWork::set_stack(std::vector<std::size_t> layers) {
    stack_ = std::move(layers);
    place_of_.clear();
    for (std::size_t place = 0; place < stack_.size(); ++place) place_of_[stack_[place]] = place;
}

void CompositionWork::work(const std::set<std::size_t>& places, bool goes_deeper) {
    Layers layers = places;
    while (!layers.empty()) {
        const std::vector<std::size_t> before = stack_;
        const std::size_t first_new = next_layer_;
        try {
            un_nest(without_large(without_named_in_expressions(layers)));
        } catch (const lottie::looks::TooMuchWork&) {
            for (const Workbench::Nest& nest : nests_among(layers)) {
                if (!entry(stack_[nest.place]).is_kept()) keep(stack_[nest.place], kTooMuchWork);
            }
            return;
        }
        if (stack_ == before) return;
        // What stayed is tried again where the layer that kept it may be gone now.
        Layers next;
        for (const Workbench::Nest& nest : state_.bench.nests(composition_)) {
            const std::size_t layer = stack_[nest.place];
            if (stays_.contains(layer)) continue;
            if (layers.contains(layer) || (goes_deeper && layer >= first_new)) next.insert(layer);
        }
        layers = std::move(next);
    }
}

std::vector<Workbench::Nest> CompositionWork::nests_among(const Layers& layers) const {
    std::vector<Workbench::Nest> nests;
    for (const Workbench::Nest& nest : state_.bench.nests(composition_)) {
        if (layers.contains(stack_[nest.place])) nests.push_back(nest);
    }
    return nests;
}

FlattenedNest& CompositionWork::entry(std::size_t layer) {
    const std::vector<Workbench::Nest>& nests = state_.bench.nests(composition_);
    const Workbench::Nest& nest =
        *std::lower_bound(nests.begin(), nests.end(), place_of_.at(layer),
                          [](const auto& one, std::size_t place) { return one.place < place; });
    const auto [found, is_new] = state_.nest_of_origin.emplace(nest.origin, state_.nests.size());
    if (is_new) {
        FlattenedNest& made = state_.nests.emplace_back();
        made.origin = nest.origin;
        made.composition = state_.bench.id(composition_);
        made.composition_name = state_.bench.name(composition_);
        made.number = nest.place + 1;
        made.name = nest.name;
        made.layers = state_.bench.layer_count(nest.source);
    }
    return state_.nests[found->second];
}

void CompositionWork::keep(std::size_t layer, const std::string& reason) {
    entry(layer).kept_because = reason;
}

CompositionWork::Layers CompositionWork::without_named_in_expressions(const Layers& layers) {
    Layers free;
    for (const Workbench::Nest& nest : nests_among(layers)) {
        const std::size_t layer = stack_[nest.place];
        entry(layer);
        const auto& calls = state_.judge.composition_calls();
        std::string reason = state_.bench.reason_to_stay(nest.source, calls);
        if (reason.empty()) reason = state_.bench.reason_to_stay(composition_, calls);
        if (reason.empty() || state_.options.all) {
            free.insert(layer);
        } else {
            keep(layer, std::string(code(Reason::composition_reference)) + ": " + reason);
        }
    }
    return free;
}

// Counts the text that would come out; of several nests that share a composition the last adds nothing.
CompositionWork::Layers CompositionWork::without_large(const Layers& layers) {
    Layers small;
    std::map<std::size_t, std::size_t> uses;
    double bytes = static_cast<double>(state_.bench.byte_count());
    for (const Workbench::Nest& nest : nests_among(layers)) {
        std::size_t& left = uses.try_emplace(nest.source, state_.bench.use_count(nest.source)).first->second;
        const double more = left > 1 ? static_cast<double>(state_.bench.layer_bytes(nest.source)) : 0;
        if (more > 0 && bytes + more > state_.most_bytes) {
            keep(stack_[nest.place], kTooLarge);
            continue;
        }
        bytes += more;
        --left;
        small.insert(stack_[nest.place]);
    }
    return small;
}

void CompositionWork::un_nest(Layers layers) {
    while (!layers.empty()) {
        Attempt tried = attempt(layers);
        Refused refused = refused_of(tried, layers);
        if (refused.empty()) return accept(tried);
        if (refused.size() == layers.size() && layers.size() > 1) {
            // What a run does to other layers is reported for each of its nests.
            std::erase_if(refused, [](const auto& one) { return !one.second.stands_alone; });
            if (refused.empty()) {
                const auto middle = std::next(layers.begin(), static_cast<std::ptrdiff_t>(layers.size() / 2));
                un_nest({layers.begin(), middle});
                layers.erase(layers.begin(), middle);
                continue;
            }
        }
        for (const auto& [layer, refusal] : refused) {
            keep(layer, refusal.reason);
            if (refusal.stands_alone) stays_.insert(layer);
            layers.erase(layer);
        }
    }
}

CompositionWork::Attempt CompositionWork::attempt(const Layers& layers) {
    if (!stage_) {
        state_.limits.work->spend(kStepsPerStage);
        stage_ = std::make_shared<Stage>(state_, composition_);
        state_.limits.work->spend(kStepsPerByte * stage_->before.size());
    }
    state_.bytes_to_read -= static_cast<double>(stage_->before.size());
    if (state_.bytes_to_read < 0) throw lottie::looks::TooMuchWork();
    const auto stack = stage_->comp.stack().to_vector();
    std::vector<host::model::Layer*> nests;
    for (const Workbench::Nest& nest : nests_among(layers)) nests.push_back(stack.at(nest.place));
    Attempt tried{stage_->trials.run(stage_->comp, nests, false), nullptr, {}, {}, {}, false, {}, {}};
    judge(tried);
    mend(tried);
    stage_->trials.undo();
    for (const NestReport& report : tried.reports) {
        FlattenedNest& nest = entry(stack_[report.nest]);
        nest.verdict = report.verdict;
        nest.findings = report.findings;
        nest.mended = tried.mending ? tried.mending->mended(report.nest) : std::vector<Reason>();
    }
    return tried;
}

void CompositionWork::judge(Attempt& tried) {
    tried.reports = state_.judge.compare(tried.change(), {tried.layers(), {}, state_.bench.byte_count()});
    follow_names(tried);
    for (NestReport& report : tried.reports) add_losses(report, tried.losses);
}

// What state machines and themes find after the run and the mending.
void CompositionWork::follow_names(Attempt& tried) {
    const auto& run = tried.trial.interactions;
    tried.losses = run.losses;
    tried.renamed = new_layer_names({run.names}).names;
    if (tried.mending != nullptr) {
        const auto mended = follow_mending(run, {tried.trial.change, tried.trial.written.layers},
                                           {tried.change(), tried.layers()}, state_.references);
        tried.losses.insert(tried.losses.end(), mended.losses.begin(), mended.losses.end());
        for (const auto& [name, now] : mended.names) {
            const auto before = std::find_if(tried.renamed.begin(), tried.renamed.end(),
                                             [&name = name](const auto& one) { return one.second == name; });
            tried.renamed[before == tried.renamed.end() ? name : before->first] = *now.begin();
        }
    }
    for (const auto& [before, now] : tried.renamed) {
        if (!state_.single.contains(before)) tried.losses.push_back(has_several_names(before));
    }
}

// Why the nest may not differ at all; null if it may.
const std::string* CompositionWork::why_exact_only(const NestReport& report) {
    const auto found = state_.learned.exact_only.find(entry(stack_[report.nest]).origin);
    return found == state_.learned.exact_only.end() ? nullptr : &found->second;
}

// Whether the nest differs more than it may. Differences too small to see add up over several nests, and over the
// times that the picture shows them.
bool CompositionWork::is_seen(const NestReport& report, double unseen_before) {
    const bool must_be_exact = state_.options.exact || why_exact_only(report) != nullptr;
    if (report.verdict > (must_be_exact ? Verdict::exact : Verdict::equal_to_the_eye)) return true;
    const double more = report.unseen * state_.shown[composition_];
    return more > 0 && unseen_before + more > state_.unseen_left;
}

// As long as something can be seen that has a remedy.
void CompositionWork::mend(Attempt& tried) {
    while (true) {
        std::vector<NestReport> seen;
        double unseen = 0;
        auto scope = Mending::Scope::changes;
        for (const NestReport& report : tried.reports) {
            const bool may_stay = !state_.mends_unseen || report.unseen == 0;
            if (may_stay && !is_seen(report, unseen)) {
                unseen += report.unseen * state_.shown[composition_];
                continue;
            }
            const bool adds_up = report.verdict == Verdict::equal_to_the_eye;
            if (adds_up && why_exact_only(report) != nullptr) {
                scope = Mending::Scope::all;
            } else if (adds_up) {
                scope = std::max(scope, Mending::Scope::changes_and_clips);
            }
            seen.push_back(report);
        }
        if (seen.empty()) return;
        if (scope != Mending::Scope::changes) tried.mends_unseen = true;
        if (!tried.mending) tried.unmended = tried.reports;
        const std::size_t layers = tried.trial.written.layers.size();
        state_.limits.work->spend(layers * layers / kPairsPerStep);
        if (!tried.mending)
            tried.mending = std::make_unique<Mending>(stage_->unmended(state_.judge), tried.trial.written.layers,
                                                      tried.trial.change, *state_.limits.work);
        const bool is_mended = tried.mending->apply_remedies(seen, scope);
        tried.mended_layers = tried.mending->layers();
        if (!is_mended) return;
        judge(tried);
    }
}

CompositionWork::Refused CompositionWork::refused_of(const Attempt& tried, const Layers& layers) {
    Refused refused;
    double unseen = 0;
    for (std::size_t i = 0; i < tried.reports.size() && !state_.options.all; ++i) {
        const NestReport& report = tried.reports[i];
        if (!is_seen(report, unseen)) {
            unseen += report.unseen * state_.shown[composition_];
            continue;
        }
        const bool adds_up = report.verdict != Verdict::changes && !state_.options.exact;
        const std::string* why = why_exact_only(report);
        if (why != nullptr && adds_up) {
            refused.emplace(stack_[report.nest], Refusal{*why});
            continue;
        }
        // What was to mend a difference too small to see may be what is in the way.
        const bool is_overdone = why == nullptr && tried.mends_unseen && tried.unmended[i].unseen > 0;
        if (adds_up || is_overdone) state_.accumulating[composition_].insert(entry(stack_[report.nest]).origin);
        FlattenedNest& nest = entry(stack_[report.nest]);
        nest.findings = tried.causes(i);
        const char* with_others = adds_up ? ", but with others like it the eye would see it" : "";
        refused.emplace(stack_[report.nest], Refusal{main_reason(nest.findings) + with_others, report.stands_alone});
    }
    if (refused.empty()) {
        for (const std::size_t layer : too_large(tried, layers)) refused.emplace(layer, Refusal{kTooLarge});
    }
    return refused;
}

// Gives up half of the shared ones if the result is too large after all, and more if that is not enough.
std::vector<std::size_t> CompositionWork::too_large(const Attempt& tried, const Layers& layers) {
    double bytes =
        static_cast<double>(state_.bench.byte_count()) - static_cast<double>(state_.bench.layer_bytes(composition_));
    for (const std::string_view layer : tried.layers()) bytes += static_cast<double>(layer.size() + 1);
    std::vector<std::size_t> shared;
    std::map<std::size_t, std::size_t> used_here;
    for (const Workbench::Nest& nest : nests_among(layers)) {
        const std::size_t uses = state_.bench.use_count(nest.source);
        if (uses > 1) shared.push_back(stack_[nest.place]);
        if (++used_here[nest.source] == uses) bytes -= static_cast<double>(state_.bench.layer_bytes(nest.source));
    }
    if (bytes <= state_.most_bytes) return {};
    return {shared.begin() + static_cast<std::ptrdiff_t>(shared.size() / 2), shared.end()};
}

void CompositionWork::accept(Attempt& tried) {
    state_.judge.accept();
    for (const auto& [before, now] : tried.renamed) state_.rename(before, now);
    for (const NestReport& report : tried.reports) {
        state_.unseen_left -= report.unseen * state_.shown[composition_];
        const std::size_t origin = entry(stack_[report.nest]).origin;
        state_.flat.insert(origin);
        if (report.verdict == Verdict::equal_to_the_eye) state_.slight.insert(origin);
    }
    const lottie::looks::StackChange change = tried.change();
    state_.bench.put_back(composition_, change, tried.layers());
    std::vector<std::size_t> now;
    for (const Origin& origin : change.after)
        now.push_back(origin.kind == Origin::Kind::kept ? stack_[origin.layer] : next_layer_++);
    set_stack(std::move(now));
    stage_.reset();
}

}  // namespace cli
