// Un-nesting under conditions on each nest's look and on the file's size.
#include "run/judged_run.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <unordered_set>

#include "cli/shared/console.h"
#include "cli/shared/selection.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;
using lottie::looks::NestReport;
using lottie::looks::Verdict;

using Layers = std::vector<Layer*>;

void append(auto& all, const auto& more) {
    all.insert(all.end(), more.begin(), more.end());
}

// Counts each composition once, at the end.
void add(UnnestRecord& all, const UnnestRecord& one) {
    all.nests += one.nests;
    all.layers_made += one.layers_made;
    append(all.alerts, one.alerts);
    append(all.reports, one.reports);
    append(all.log, one.log);
}

// Where and under which name exflate list shows a layer: runs renumber and rename layers.
struct ListedAs {
    std::string composition;  // empty for the one being worked on
    std::size_t number;
    std::string name;
};

std::unordered_map<host::model::LayerId, ListedAs> listed_nests(const host::model::Project& project,
                                                                const Comp& worked_on) {
    std::unordered_map<host::model::LayerId, ListedAs> listed;
    for (const Comp* comp : project.comps()) {
        for (const Layer* nest : nests_of(*comp)) {
            listed[nest->id()] = {comp == &worked_on ? "" : comp->name(), static_cast<std::size_t>(nest->index()) + 1,
                                  nest->display_name()};
        }
    }
    return listed;
}

class JudgedRun {
  public:
    JudgedRun(lottie::document::Document& document, const std::string& text, const RunContext& context, Comp& comp,
              const Options& options)
        : trials_(document, context),
          judge_(text, context.limits.work),
          comp_(comp),
          options_(options),
          input_bytes_(text.size()),
          listed_(listed_nests(document.project(), comp)) {
        for (const Comp* source : document.project().comps()) {
            if (source->users().size() > 1) shared_.insert(source);
        }
    }

    std::vector<JudgedNest> run(Layers nests, UnnestRecord& record) {
        const bool one_by_one = options_.only_exact || options_.keep_look || options_.max_growth;
        while (!nests.empty()) {
            const host::model::LayerId newest = comp_.project().newest_layer_id();
            if (one_by_one) {
                for (Layer* nest : nests) run_one(*nest);
            } else {
                run_together(nests);
            }
            nests = options_.recursive ? new_nests_of(comp_, newest) : Layers();
        }
        for (const Comp* source : sources_) {
            ++(source->is_alive() ? record_.sources_kept : record_.sources_deleted);
        }
        settle_source_notices(record_);
        record = std::move(record_);
        return std::move(judged_);
    }

  private:
    // A nest that came out of another is a copy of a listed one.
    JudgedNest unjudged(const Layer& nest) {
        const auto own = listed_.find(nest.id());
        const ListedAs& listed = own != listed_.end() ? own->second : listed_.at(nest.copied_from());
        listed_.emplace(nest.id(), listed);
        JudgedNest judged;
        judged.composition = listed.composition;
        judged.number = listed.number;
        judged.name = listed.name;
        judged.layers = static_cast<std::size_t>(nest.source()->comp()->layer_count());
        return judged;
    }

    void run_one(Layer& nest) {
        if (!nest.is_alive()) return;  // an earlier run deleted its composition
        JudgedNest judged = unjudged(nest);
        const Comp* source = nest.source()->comp();
        const Trial trial = trials_.run(comp_, {&nest});
        const NestReport report = compare(judge_, trial).front();
        judged.verdict = report.verdict;
        judged.bytes = static_cast<long long>(trial.byte_count) - static_cast<long long>(judge_.byte_count());
        if ((options_.only_exact && report.verdict != Verdict::exact) ||
            (options_.keep_look && report.verdict == Verdict::changes)) {
            judged.kept_because = main_reason(report.findings);
        } else if (shared_.contains(source) && is_too_large(trial.byte_count)) {
            judged.kept_because = "the file would grow beyond the limit, and other nests share its composition";
        }
        if (judged.kept_because.empty()) {
            refuse_change(judged, report);
            judge_.accept();
            sources_.insert(source);
            add(record_, trial.record);
        } else {
            trials_.undo();
        }
        judged_.push_back(std::move(judged));
    }

    void run_together(const Layers& nests) {
        std::vector<JudgedNest> together;
        std::unordered_map<std::size_t, std::size_t> by_place;
        for (const Layer* nest : nests) {
            by_place.emplace(static_cast<std::size_t>(nest->index()), together.size());
            together.push_back(unjudged(*nest));
            sources_.insert(nest->source()->comp());
        }
        const Trial trial = trials_.run(comp_, nests);
        for (const NestReport& report : compare(judge_, trial)) {
            JudgedNest& judged = together.at(by_place.at(report.nest));
            refuse_change(judged, report);
            judged.verdict = report.verdict;
        }
        judge_.accept();
        add(record_, trial.record);
        std::move(together.begin(), together.end(), std::back_inserter(judged_));
    }

    bool is_too_large(std::size_t bytes) const {
        return options_.max_growth &&
               static_cast<double>(bytes) > static_cast<double>(input_bytes_) * (1 + *options_.max_growth / 100);
    }

    void refuse_change(const JudgedNest& nest, const NestReport& report) const {
        if (!options_.strict || report.verdict != Verdict::changes) return;
        throw Failure(ExitCode::look_changes, "nothing was written, for the look of " + place_of(nest) +
                                                  " would change: " + main_reason(report.findings));
    }

    Trials trials_;
    lottie::looks::Judge judge_;
    Comp& comp_;
    const Options& options_;
    std::size_t input_bytes_;
    std::unordered_set<const Comp*> shared_;   // by several nests of the input
    std::unordered_set<const Comp*> sources_;  // of what was un-nested
    std::unordered_map<host::model::LayerId, ListedAs> listed_;
    std::vector<JudgedNest> judged_;
    UnnestRecord record_;
};

}  // namespace

std::string place_of(const JudgedNest& nest) {
    return "nest #" + std::to_string(nest.number) + " " + in_quotes(nest.name) +
           (nest.composition.empty() ? "" : " in composition " + in_quotes(nest.composition));
}

bool is_judged(const Options& options) {
    return options.strict || options.only_exact || options.keep_look || options.max_growth;
}

std::vector<JudgedNest> unnest_judged(lottie::document::Document& document, const std::string& text,
                                      const RunContext& context, Comp& comp, Layers nests, const Options& options,
                                      UnnestRecord& record) {
    return JudgedRun(document, text, context, comp, options).run(std::move(nests), record);
}

}  // namespace cli
