// Un-nesting with an eye on the looks and on the size of the file.
#include "run/judged_run.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

#include "cli/console.h"
#include "cli/shared/selection.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;
using lottie::looks::Animation;
using lottie::looks::NestReport;
using lottie::looks::Verdict;

using Layers = std::vector<Layer*>;

void append(auto& all, const auto& more) {
    all.insert(all.end(), more.begin(), more.end());
}

// Compositions are counted at the end, each once.
void add(Record& all, const Record& one) {
    all.nests += one.nests;
    all.layers_made += one.layers_made;
    append(all.alerts, one.alerts);
    append(all.reports, one.reports);
    append(all.log, one.log);
}

LedgerEntry entry_for(const Layer& nest) {
    LedgerEntry entry;
    entry.number = static_cast<std::size_t>(nest.index()) + 1;
    entry.name = nest.display_name();
    entry.layers = static_cast<std::size_t>(nest.source()->comp()->layer_count());
    return entry;
}

// The first reason of the greatest weight.
std::string main_reason(const NestReport& report) {
    const auto worst = std::max_element(report.findings.begin(), report.findings.end(),
                                        [](const auto& a, const auto& b) { return a.weight < b.weight; });
    return worst == report.findings.end() ? "" : std::string(code(worst->reason)) + ": " + worst->sentence;
}

class JudgedRun {
  public:
    JudgedRun(lottie::document::Document& document, const std::string& text, const Surroundings& surroundings,
              Comp& comp, const Options& options)
        : document_(document),
          surroundings_(surroundings),
          comp_(comp),
          options_(options),
          input_size_(text.size()),
          now_(text) {
        for (const Comp* source : document.project().comps()) {
            if (source->users().size() > 1) shared_.insert(source);
        }
    }

    Ledger run(Layers nests) {
        const bool one_by_one = options_.only_exact || options_.max_growth;
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
            ++(source->is_alive() ? ledger_.record.sources_kept : ledger_.record.sources_deleted);
        }
        return std::move(ledger_);
    }

  private:
    void run_one(Layer& nest) {
        if (!nest.is_alive()) return;  // gone with a composition that an earlier run deleted
        LedgerEntry entry = entry_for(nest);
        const Comp* source = nest.source()->comp();
        const Trial trial = try_unnesting(document_, surroundings_, comp_, {&nest});
        Animation after(trial.after);
        const NestReport report = judge(now_, after, trial.change).front();
        entry.verdict = report.verdict;
        entry.bytes = static_cast<long long>(after.byte_count()) - static_cast<long long>(now_.byte_count());
        if (options_.only_exact && report.verdict != Verdict::exact) {
            entry.kept_because = main_reason(report);
        } else if (shared_.contains(source) && is_too_large(after.byte_count())) {
            entry.kept_because = "the file would grow beyond the limit, and other nests share its composition";
        }
        if (entry.kept_because.empty()) {
            refuse_change(report);
            now_ = std::move(after);
            sources_.insert(source);
            add(ledger_.record, trial.record);
        } else {
            take_back(document_);
        }
        ledger_.entries.push_back(std::move(entry));
    }

    void run_together(const Layers& nests) {
        std::vector<LedgerEntry> entries;
        for (const Layer* nest : nests) {
            entries.push_back(entry_for(*nest));
            sources_.insert(nest->source()->comp());
        }
        const Trial trial = try_unnesting(document_, surroundings_, comp_, nests);
        Animation after(trial.after);
        for (const NestReport& report : judge(now_, after, trial.change)) {
            refuse_change(report);
            for (LedgerEntry& entry : entries) {
                if (entry.number == report.nest + 1) entry.verdict = report.verdict;
            }
        }
        now_ = std::move(after);
        add(ledger_.record, trial.record);
        std::move(entries.begin(), entries.end(), std::back_inserter(ledger_.entries));
    }

    bool is_too_large(std::size_t bytes) const {
        return options_.max_growth &&
               static_cast<double>(bytes) > static_cast<double>(input_size_) * (1 + *options_.max_growth / 100);
    }

    void refuse_change(const NestReport& report) const {
        if (!options_.strict || report.verdict != Verdict::changes) return;
        throw Failure(ExitCode::look_changes, "nothing was written, for the look of nest #" +
                                                  std::to_string(report.nest + 1) + " " + in_quotes(report.name) +
                                                  " would change: " + main_reason(report));
    }

    lottie::document::Document& document_;
    const Surroundings& surroundings_;
    Comp& comp_;
    const Options& options_;
    std::size_t input_size_;
    Animation now_;
    std::unordered_set<const Comp*> shared_;   // by several nests of the input
    std::unordered_set<const Comp*> sources_;  // of what was un-nested
    Ledger ledger_;
};

}  // namespace

bool is_judged(const Options& options) {
    return options.strict || options.only_exact || options.max_growth;
}

Ledger unnest_judged(lottie::document::Document& document, const std::string& text, const Surroundings& surroundings,
                     Comp& comp, Layers nests, const Options& options) {
    return JudgedRun(document, text, surroundings, comp, options).run(std::move(nests));
}

}  // namespace cli
