// Runs the plug-in's command on nests, once or until none is left.
#include "cli/shared/unnest.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "cli/shared/failure.h"
#include "cli/shared/selection.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;
using host::runner::VisitResult;

using Layers = std::vector<Layer*>;

// Compositions that share compositions multiply: ten levels of ten nests are 10^10 layers.
constexpr double kMaxLayers = 1'000'000;

// What a run costs, in steps: in itself, for each layer that it copies, and for each nest to walk past one layer or
// item of the project.
constexpr std::size_t kStepsPerRun = 20'000;
constexpr std::size_t kStepsPerCopy = 2'000;
constexpr std::size_t kStepsPerWalk = 4;

const Comp& source_of(const Layer& nest) {
    return *nest.source()->comp();
}

// How many layers each composition has once all nests inside it are un-nested. Not recursive, so that chains may have
// any length; a floating-point number, as there is no upper bound.
class Expansion {
  public:
    double layers_of(const Comp& root) {
        std::vector<const Comp*> open = {&root};
        while (!open.empty()) {
            const Comp* comp = open.back();
            if (counts_.contains(comp) || count(*comp, open)) open.pop_back();
        }
        return counts_.at(&root);
    }

  private:
    // False if compositions inside must be counted first; they are pushed onto `open`.
    bool count(const Comp& comp, std::vector<const Comp*>& open) {
        const std::size_t open_before = open.size();
        double layers = 0;
        for (const Layer* layer : comp.stack().to_vector()) {
            if (!is_nest(*layer)) {
                layers += 1;
            } else if (const auto known = counts_.find(&source_of(*layer)); known != counts_.end()) {
                layers += known->second;
            } else {
                open.push_back(&source_of(*layer));
            }
        }
        if (open.size() > open_before) return false;
        counts_[&comp] = layers;
        return true;
    }

    std::unordered_map<const Comp*, double> counts_;
};

void refuse_too_many_layers(const Layers& nests, bool recursive) {
    Expansion expansion;
    double layers = 0;
    for (const Layer* nest : nests)
        layers += recursive ? expansion.layers_of(source_of(*nest)) : source_of(*nest).layer_count();
    if (layers <= kMaxLayers) return;
    throw Failure(ExitCode::usage, "more than a million layers would come out: choose fewer nests with --layer" +
                                       std::string(recursive ? " or leave out --recursive" : ""));
}

void append(auto& all, auto&& more) {
    all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

// Keeps messages and turns an error into a failure; `what` begins the sentence.
void keep_and_check(VisitResult outcome, UnnestRecord& record, const std::string& what) {
    append(record.alerts, std::move(outcome.alerts));
    append(record.reports, std::move(outcome.reports));
    append(record.log, std::move(outcome.log));
    if (outcome.scripts_took_too_long) {
        throw Failure(ExitCode::failed,
                      "a script took too long and was ended: either a name in the file is itself a script, or there is "
                      "a great deal to do; --script-time gives more time");
    }
    if (!outcome.has_failed()) return;
    throw Failure(ExitCode::failed, (outcome.lacked_memory ? "there is not enough memory for it: " : "") + what +
                                        (outcome.has_thrown ? " ended with an exception"
                                                            : " failed with error " + std::to_string(outcome.error)));
}

// For each nest the plug-in walks through the stack and the project.
void spend_for_run(lottie::looks::Work& work, const Comp& comp, const Layers& nests) {
    std::size_t copies = 0;
    for (const Layer* nest : nests) copies += static_cast<std::size_t>(source_of(*nest).layer_count());
    const std::size_t walk = static_cast<std::size_t>(comp.layer_count() + comp.project().item_count()) + copies;
    work.spend(kStepsPerRun + kStepsPerCopy * copies + kStepsPerWalk * nests.size() * walk);
}

// Nests before a run, to tell from the composition after it how many were un-nested: they are gone, or copies of
// their layers have appeared.
class NestsBefore {
  public:
    NestsBefore(const Comp& comp, const Layers& nests) : newest_(comp.project().newest_layer_id()) {
        for (const Layer* nest : nests) nests_[&source_of(*nest)].push_back(nest->id());
    }

    std::size_t count_unnested(const Comp& comp) const {
        std::unordered_map<host::model::LayerId, std::size_t> copies;
        for (const Layer* layer : layers_since(comp, newest_)) ++copies[layer->copied_from()];
        std::size_t count = 0;
        for (const auto& [source, ids] : nests_) {
            const auto gone = static_cast<std::size_t>(std::count_if(
                ids.begin(), ids.end(), [&](auto id) { return comp.project().layer_by_id(id) == nullptr; }));
            count += gone == ids.size() ? gone : std::max(gone, std::min(ids.size(), copied(*source, copies)));
        }
        return count;
    }

  private:
    // How often the layers of a source came out that still has a nest.
    static std::size_t copied(const Comp& source, const std::unordered_map<host::model::LayerId, std::size_t>& copies) {
        std::size_t most = 0;
        for (const Layer* layer : source.stack().to_vector()) {
            const auto found = copies.find(layer->id());
            if (found != copies.end()) most = std::max(most, found->second);
        }
        return most;
    }

    host::model::LayerId newest_;
    std::unordered_map<const Comp*, std::vector<host::model::LayerId>> nests_;  // by source
};

void run_round(host::runner::Session& session, Comp& comp, const Layers& nests, UnnestRecord& record) {
    const NestsBefore before(comp, nests);
    comp.select(nests);
    const VisitResult outcome = session.run_command(session.menu_items().front().command);
    keep_and_check(outcome, record, "the plug-in's command");
    if (!outcome.is_enabled) throw Failure(ExitCode::failed, "the plug-in's command is not available for these layers");
    if (outcome.undo_steps.empty()) throw NothingChanged(std::exchange(record.alerts, {}));
    record.nests += before.count_unnested(comp);
}

bool is_source_notice(const host::scriptui::Alert& alert) {
    return alert.title == "Source Not Deleted" || alert.title == "Sources Not Deleted";
}

std::string cause_of_nothing(const std::vector<host::scriptui::Alert>& alerts) {
    std::string sentence = "the plug-in's command changed nothing";
    for (const host::scriptui::Alert& alert : alerts)
        sentence += (&alert == &alerts.front() ? ": " : "; ") + in_words(alert);
    return sentence;
}

}  // namespace

NothingChanged::NothingChanged(const std::vector<host::scriptui::Alert>& alerts)
    : Failure(ExitCode::failed, cause_of_nothing(alerts)), is_cancelled_(alerts.empty()) {}

std::string in_words(const host::scriptui::Alert& alert) {
    return (alert.title.empty() ? "" : alert.title + ": ") + alert.message;
}

void settle_source_notices(UnnestRecord& record) {
    const auto notices = std::count_if(record.alerts.begin(), record.alerts.end(), is_source_notice);
    if (notices == 0 || (notices == 1 && record.sources_kept > 0)) return;
    std::erase_if(record.alerts, is_source_notice);
    if (record.sources_kept == 1) {
        record.alerts.push_back(
            {"A source could not be deleted because it is being used in other places", "Source Not Deleted"});
    } else if (record.sources_kept > 1) {
        record.alerts.push_back(
            {"Some (or all) sources could not be deleted because they are being used in other places",
             "Sources Not Deleted"});
    }
}

Failure too_much_work(const lottie::looks::TooMuchWork& refused) {
    return {ExitCode::bad_input, std::string(refused.what()) + ": choose fewer nests with --layer"};
}

void start_plugin(host::runner::Session& session, const host::runner::PluginModule& plugin, UnnestRecord& record) {
    keep_and_check(session.start(plugin), record, "the plug-in cannot start: its entry point");
    if (session.menu_items().empty()) throw Failure(ExitCode::failed, "the plug-in has no command");
}

void unnest(host::runner::Session& session, Comp& comp, Layers nests, bool recursive, lottie::looks::Work& work,
            UnnestRecord& record) {
    refuse_too_many_layers(nests, recursive);
    comp.project().set_active_panel(host::model::ActivePanel::timeline);
    comp.project().open_comp(&comp);

    const host::model::LayerId newest_before = comp.project().newest_layer_id();
    std::unordered_set<const Comp*> sources;
    while (!nests.empty()) {
        for (const Layer* nest : nests) sources.insert(&source_of(*nest));
        const host::model::LayerId newest = comp.project().newest_layer_id();
        spend_for_run(work, comp, nests);
        run_round(session, comp, nests, record);
        nests = recursive ? new_nests_of(comp, newest) : Layers();  // a kept nest is not tried again
        for (const Layer* nest : nests) record.places_lost += nest->parent() != nullptr ? 1U : 0U;
    }

    record.layers_made += layers_since(comp, newest_before).size();
    for (const Comp* source : sources) ++(source->is_alive() ? record.sources_kept : record.sources_deleted);
    settle_source_notices(record);
}

}  // namespace cli
