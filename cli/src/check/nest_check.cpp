// What un-nesting one nest by itself does to the look.
#include "check/nest_check.h"

#include <cmath>

#include "cli/shared/animation_file.h"
#include "looks/extract_composition.h"

namespace cli {
namespace {

constexpr std::size_t kBytesPerStep = 4;  // of a whole animation, written and read again for its pictures

// The frames that findings name, as the renderer counts them.
std::vector<int> frames_of(const std::vector<lottie::looks::Finding>& findings, double first_frame) {
    std::vector<int> frames;
    for (const auto& finding : findings) {
        if (finding.frame) frames.push_back(static_cast<int>(std::lround(*finding.frame - first_frame)));
    }
    return frames;
}

}  // namespace

bool CheckedNest::fails() const {
    if (is_kept()) return flattened->staying == Tolerated::no;
    for (std::size_t i = 0; i < report.findings.size(); ++i) {
        if (report.findings[i].weight == lottie::looks::Weight::change && tolerance(i) == Tolerated::no) return true;
    }
    return false;
}

CheckedNest as_flattened(const FlattenedNest& nest, std::size_t bytes_after) {
    CheckedNest checked;
    checked.composition = nest.composition;
    checked.composition_name = nest.composition_name;
    checked.number = nest.number;
    checked.layers = nest.layers;
    checked.bytes_after = bytes_after;
    checked.report = {nest.number - 1, nest.name, nest.verdict, nest.findings, 0};
    checked.flattened = {nest.kept_because, Tolerated::no, nest.mended};
    return checked;
}

NestChecker::NestChecker(lottie::document::Document& document, const host::runner::PluginModule& plugin,
                         const DialogAnswers& answers, const FileLimits& limits,
                         const lottie::packed::References& references)
    : document_(document),
      work_(limits.work),
      trials_(document, plugin, answers, limits, references),
      judge_(document.text(), limits.work) {}

NestTrial NestChecker::check(host::model::Layer& nest, bool gives_text) {
    host::model::Comp& comp = nest.comp();
    CheckedNest checked;
    checked.composition = document_.comp_id(comp);
    checked.composition_name = comp.name();
    checked.number = static_cast<std::size_t>(nest.index()) + 1;
    checked.layers = static_cast<std::size_t>(nest.source()->comp()->layer_count());
    try {
        const Trial trial = trials_.run(comp, {&nest});
        std::string after;
        if (gives_text) after = write_animation(document_).text();
        trials_.undo();
        work_->spend(after.size() / kBytesPerStep);
        checked.bytes_after = trial.byte_count;
        checked.report = compare(judge_, trial).front();
        return {std::move(checked), std::move(after)};
    } catch (const lottie::looks::TooMuchWork& refused) {
        throw too_much_work(refused);
    }
}

Proven prove(const std::string& before, const std::string& after, const std::string& composition,
             const std::vector<lottie::looks::Finding>& findings, lottie::pictures::DrawingBudget& budget) {
    if (budget.time.count() <= 0) throw std::runtime_error("the time for them is used up; --picture-time gives more");
    const auto part_before = lottie::looks::extract_composition(before, composition);
    const auto part_after = lottie::looks::extract_composition(after, composition);
    const double first = part_before.first_frame;
    auto comparison =
        lottie::pictures::compare_in_child(part_before.text, part_after.text, frames_of(findings, first), budget);
    const Proof proof{comparison.looks_equal, first + comparison.worst_frame,
                      comparison.worst.mean,  comparison.worst.share_beyond_8,
                      comparison.worst.ssim,  static_cast<std::size_t>(comparison.frames)};
    return {proof, std::move(comparison.worst_before), std::move(comparison.worst_after)};
}

std::string drawing_progress(std::size_t done, std::size_t count, std::string_view noun) {
    return "pictures: " + std::to_string(done) + " of " + counted(count, noun);
}

}  // namespace cli
