// One nest un-nested by itself: what that does to the look.
#include "check/nest_check.h"

#include <cmath>

#include "cli/shared/trial.h"
#include "looks/alone.h"
#include "pictures/drawing_process.h"

namespace cli {
namespace {

// Of the processor's time, for the pictures of one nest; real files take a few.
constexpr std::chrono::seconds kMaxTime(120);

// The frames that findings name, as the renderer counts them.
std::vector<int> frames_of(const std::vector<lottie::looks::Finding>& findings, double first_frame) {
    std::vector<int> frames;
    for (const auto& finding : findings) {
        if (finding.frame) frames.push_back(static_cast<int>(std::lround(*finding.frame - first_frame)));
    }
    return frames;
}

}  // namespace

NestTrial check_nest(lottie::document::Document& document, const lottie::looks::Animation& before,
                     const host::runner::PluginModule& plugin, const DialogAnswers& answers,
                     const host::script::Limits& limits, host::model::Layer& nest) {
    host::model::Comp& comp = nest.comp();
    CheckedNest checked;
    checked.composition = document.comp_id(comp);
    checked.composition_name = comp.name();
    checked.number = static_cast<std::size_t>(nest.index()) + 1;
    checked.layers = static_cast<std::size_t>(nest.source()->comp()->layer_count());
    const Trial trial = try_unnesting(document, plugin, answers, limits, comp, {&nest});
    undo_trial(document);
    checked.bytes_after = trial.after.size();
    lottie::looks::Animation after(trial.after);
    checked.report = judge(before, after, trial.change).front();
    return {std::move(checked), std::move(after)};
}

Proven prove(const lottie::looks::Animation& before, const lottie::looks::Animation& after,
             const std::string& composition, const std::vector<lottie::looks::Finding>& findings) {
    const double first = lottie::looks::first_frame(before, composition);
    lottie::pictures::DrawingBudget budget{kMaxTime};
    auto comparison =
        lottie::pictures::compare_in_child(composition_alone(before, composition),
                                           composition_alone(after, composition), frames_of(findings, first), budget);
    const Proof proof{comparison.looks_equal, first + comparison.worst_frame,
                      comparison.worst.mean,  comparison.worst.share_beyond_8,
                      comparison.worst.ssim,  static_cast<std::size_t>(comparison.frames)};
    return {proof, std::move(comparison.worst_before), std::move(comparison.worst_after)};
}

}  // namespace cli
