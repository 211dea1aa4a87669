// Making an animation flat, from the innermost composition outward, as far as it keeps its look.
#include "cli/flatten/flattening.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <set>

#include "cli/shared/animation_file.h"
#include "cli/shared/selection.h"
#include "cli/shared/trial.h"
#include "mend/mend.h"
#include "mend/workbench.h"

namespace cli {
namespace {

using lottie::looks::Judge;
using lottie::looks::NestReport;
using lottie::looks::Verdict;
using lottie::mend::Mending;
using lottie::mend::Workbench;

// One composition with nests, on the bench.
class CompositionWork {
  public:
    CompositionWork(Workbench& bench, std::size_t composition, const host::runner::PluginModule& plugin,
                    const host::script::Limits& limits)
        : bench_(bench),
          composition_(composition),
          before_(bench.alone(composition)),
          document_(parse_input(before_)),
          comp_(find_composition(document_, bench.id(composition))),
          trials_(document_, plugin, answers_, limits),
          judge_(before_) {}

    std::vector<FlattenedNest> work() {
        Places places;
        for (const Workbench::Nest& nest : bench_.nests(composition_)) {
            FlattenedNest& entry = entries_.emplace_back();
            entry.composition = bench_.id(composition_);
            entry.composition_name = bench_.name(composition_);
            entry.number = nest.place + 1;
            entry.name = nest.name;
            std::string reason = bench_.asked_for(nest.source);
            if (reason.empty()) reason = bench_.asked_for(composition_);
            if (reason.empty()) {
                places.insert(nest.place);
                continue;
            }
            entry.is_kept = true;
            entry.findings = {{.reason = lottie::looks::Reason::composition_reference,
                               .weight = lottie::looks::Weight::change,
                               .sentence = reason,
                               .way_out = "",
                               .layer = "",
                               .property = "",
                               .frame = {}}};
        }
        bool is_alone = false;  // each was tried by itself
        while (!places.empty()) {
            Attempt attempt = try_together(places);
            const Places changing = attempt.changing();
            if (changing.empty()) {
                bench_.put_back(composition_, attempt.text);
                break;
            }
            trials_.undo();
            // What a run does to other layers is reported of each of its nests.
            if (changing == places && places.size() > 1 && !is_alone) {
                is_alone = true;
                for (const std::size_t place : changing) {
                    if (try_alone(place)) places.erase(place);
                }
            } else {
                for (const std::size_t place : changing) {
                    keep(place);
                    places.erase(place);
                }
            }
        }
        return std::move(entries_);
    }

  private:
    using Places = std::set<std::size_t>;

    struct Attempt {
        std::string text;
        std::vector<NestReport> reports;
        bool is_shared = false;  // several nests show the composition

        Places changing() const {
            Places places;
            bool is_any_cut = is_shared;  // what nobody sees of one nest adds up over several
            for (const NestReport& report : reports) {
                const bool is_cut =
                    std::any_of(report.findings.begin(), report.findings.end(), [](const auto& finding) {
                        return finding.reason == lottie::looks::Reason::clip &&
                               finding.weight == lottie::looks::Weight::slight;
                    });
                if (report.verdict == Verdict::changes || (is_cut && is_any_cut)) {
                    places.insert(report.nest);
                } else {
                    is_any_cut = is_any_cut || is_cut;
                }
            }
            return places;
        }
    };

    // Leaves the project as the run did.
    Attempt try_together(const Places& places) {
        std::vector<host::model::Layer*> nests;
        const auto stack = comp_.stack().to_vector();
        for (const std::size_t place : places) nests.push_back(stack.at(place));
        const Trial trial = trials_.run(comp_, nests);
        const std::string after = document_.write();
        Attempt attempt{after, judge_.compare(trial.change, after), bench_.use_count(composition_) > 1};
        std::optional<Mending> mending;
        while (!attempt.changing().empty()) {
            if (!mending) mending.emplace(before_, after, trial.change);
            if (!mending->answer(attempt.reports)) break;
            attempt.text = mending->text();
            attempt.reports = judge_.compare(mending->change(), attempt.text);
        }
        for (const NestReport& report : attempt.reports) {
            FlattenedNest& entry = entry_at(report.nest);
            entry.verdict = report.verdict;
            entry.findings = report.findings;
            entry.mended = mending ? mending->mended(report.nest) : std::vector<lottie::looks::Reason>();
        }
        return attempt;
    }

    // Whether the nest must stay.
    bool try_alone(std::size_t place) {
        const Attempt attempt = try_together({place});
        trials_.undo();
        if (attempt.changing().empty()) return false;
        keep(place);
        return true;
    }

    FlattenedNest& entry_at(std::size_t place) {
        return *std::find_if(entries_.begin(), entries_.end(),
                             [&](const FlattenedNest& entry) { return entry.number == place + 1; });
    }
    void keep(std::size_t place) { entry_at(place).is_kept = true; }

    Workbench& bench_;
    std::size_t composition_;
    std::string before_;
    lottie::document::Document document_;
    host::model::Comp& comp_;
    const DialogAnswers answers_;
    Trials trials_;
    Judge judge_;
    std::vector<FlattenedNest> entries_;
};

}  // namespace

Flattened flatten_animation(const std::string& text, const host::runner::PluginModule& plugin, const Options& options) {
    const lottie::document::Document document = parse_input(text);
    if (document.is_passed_on()) return {.text = text, .nests = {}, .nests_left = 0, .warnings = document.warnings()};
    const host::script::Limits limits = script_limits(options.script_time);
    Workbench bench(text);
    Flattened flattened;
    flattened.warnings = document.warnings();
    for (const std::size_t composition : bench.innermost_first()) {
        if (bench.nests(composition).empty()) continue;
        for (FlattenedNest& nest : CompositionWork(bench, composition, plugin, limits).work())
            flattened.nests.push_back(std::move(nest));
    }
    for (const std::size_t composition : bench.innermost_first())
        flattened.nests_left += bench.nests(composition).size();
    flattened.text = bench.text(options.keep_unused);
    return flattened;
}

}  // namespace cli
