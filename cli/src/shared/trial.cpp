// Trial runs: what the command would do.
#include "cli/shared/trial.h"

#include <algorithm>
#include <set>

#include "cli/shared/animation_file.h"
#include "cli/shared/dialog_operator.h"
#include "cli/shared/failure.h"
#include "cli/shared/origins.h"
#include "shared/filled_slots.h"

namespace cli {

// What a trial costs besides the run, in steps.
constexpr std::size_t kStepsPerItem = 25;   // of the project
constexpr std::size_t kStepsPerLayer = 60;  // of the stack, while it fits into the processor's caches
constexpr std::size_t kStepsPerByte = 2;    // of a rewritten layer
constexpr std::size_t kLayersInCache = 80'000;

using host::model::Comp;
using host::model::Layer;

FileLimits file_limits(double script_time) {
    const std::chrono::milliseconds all(static_cast<std::chrono::milliseconds::rep>(script_time * 1000));
    FileLimits limits;
    limits.scripts.time = all / 4;
    limits.scripts.time_of_all = std::make_shared<host::script::SharedTime>(all);
    return limits;
}

namespace {

std::size_t steps_of_stack(std::size_t layers) {
    return kStepsPerLayer * (layers + layers * layers / kLayersInCache);
}

std::size_t count_layers(const host::model::Project& project) {
    std::size_t count = 0;
    for (const Comp* comp : project.comps()) count += static_cast<std::size_t>(comp->layer_count());
    return count;
}

}  // namespace

struct Trials::OwnContext {
    OwnContext(const host::runner::PluginModule& plugin, const DialogAnswers& answers, const FileLimits& limits,
               const lottie::packed::References& references)
        : settings(host::script::Settings::in_memory()), dialogs(answers), context{plugin, settings, dialogs, limits} {
        context.references = references;
    }

    host::script::Settings settings;
    DialogOperator dialogs;
    RunContext context;
};

Trials::Trials(lottie::document::Document& document, const host::runner::PluginModule& plugin,
               const DialogAnswers& answers, const FileLimits& limits, const lottie::packed::References& references)
    : own_context_(std::make_unique<OwnContext>(plugin, answers, limits, references)),
      document_(document),
      context_(own_context_->context),
      session_(document.project(), context_.settings, context_.dialogs, context_.limits.scripts) {}

Trials::~Trials() = default;

Trials::Trials(lottie::document::Document& document, const RunContext& context)
    : document_(document),
      context_(context),
      session_(document.project(), context.settings, context.dialogs, context.limits.scripts) {
    context.observe(session_);
}

Trial Trials::run(Comp& comp, const std::vector<Layer*>& nests, bool counts_bytes) {
    host::model::UndoJournal& journal = document_.project().undo();
    const std::size_t steps_before = journal.step_names().size();
    const ReferencedLayers referenced(document_, context_.references);
    const FilledSlots slots(document_, comp, nests, context_.references.slots);
    Origins origins(comp, nests);
    std::set<const Comp*> sources;
    for (const Layer* nest : nests) sources.insert(nest->source()->comp());
    Trial trial;
    try {
        if (!is_started_) start_plugin(session_, context_.plugin, trial.record);
        is_started_ = true;
        lottie::looks::Work& work = *context_.limits.work;
        unnest(session_, comp, nests, false, work, trial.record);
        const std::size_t looked_at = context_.references.layers.empty() ? static_cast<std::size_t>(comp.layer_count())
                                                                         : count_layers(document_.project());
        work.spend(steps_of_stack(looked_at) +
                   kStepsPerItem * static_cast<std::size_t>(document_.project().item_count()));
        trial.written = write_layers(document_, comp);
        work.spend(kStepsPerByte * trial.written.new_bytes);
    } catch (const lottie::looks::TooMuchWork&) {
        while (journal.step_names().size() > steps_before) journal.undo();
        throw;
    } catch (const Failure&) {
        while (journal.step_names().size() > steps_before) journal.undo();
        refuse_faulty_content(document_);
        throw;
    }
    trial.change = origins.change_to(comp, document_.comp_id(comp));
    for (const Comp* source : sources) {
        if (!source->is_alive()) trial.deleted.push_back(document_.comp_id(*source));
    }
    if (counts_bytes) trial.byte_count = document_.written_size();
    trial.interactions = referenced.outcome();
    for (lottie::looks::Finding& loss : slots.losses(trial.change, trial.written))
        trial.interactions.losses.push_back(std::move(loss));
    return trial;
}

void Trials::undo() {
    document_.project().undo().undo();
}

std::string main_reason(const std::vector<lottie::looks::Finding>& findings) {
    const auto worst = std::max_element(findings.begin(), findings.end(),
                                        [](const auto& a, const auto& b) { return a.weight < b.weight; });
    return worst == findings.end() ? "" : std::string(code(worst->reason)) + ": " + worst->sentence;
}

void add_losses(lottie::looks::NestReport& report, const std::vector<lottie::looks::Finding>& losses) {
    if (losses.empty()) return;
    report.findings.insert(report.findings.end(), losses.begin(), losses.end());
    std::stable_sort(report.findings.begin(), report.findings.end(),
                     [](const auto& a, const auto& b) { return a.reason < b.reason; });
    report.verdict = verdict_of(report.findings);
}

std::vector<lottie::looks::NestReport> compare(lottie::looks::Judge& judge, const Trial& trial) {
    auto reports = judge.compare(trial.change, {trial.written.layers, trial.deleted, trial.byte_count});
    for (lottie::looks::NestReport& report : reports) add_losses(report, trial.interactions.losses);
    return reports;
}

}  // namespace cli
