// `exflate report`: what un-nesting does to an animation, as a page to look at.
#include "commands.h"

#include <array>
#include <utility>

#include "base/files.h"
#include "cli/shared/animation_file.h"
#include "cli/shared/file_io.h"
#include "cli/shared/files_at_work.h"
#include "cli/shared/selection.h"
#include "cli/shared/trial.h"
#include "looks/extract_composition.h"
#include "report/report_page.h"
#include "shared/installed_parts.h"
#include "shared/layer_facts.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;
using lottie::looks::Origin;
using lottie::looks::Verdict;
using Tone = Console::Tone;

constexpr int kGain = 4;  // so that small differences show

std::vector<StackLayer> stack_of(const lottie::document::Document& document, const Comp& comp) {
    std::vector<StackLayer> stack;
    for (const Layer* layer : comp.stack().to_vector()) {
        StackLayer& shown = stack.emplace_back();
        shown.name = layer->display_name();
        shown.type = type_of(document, *layer);
        shown.in = frames(comp, layer->in_point());
        shown.out = frames(comp, layer->in_point() + layer->duration());
        shown.is_off = !layer->has_flag(host::model::kVideoActive);
    }
    return stack;
}

std::optional<WorstFrame> worst_frame(const Proven& proven) {
    if (proven.proof.looks_equal) return std::nullopt;
    return WorstFrame{png(over_white(proven.before)), png(over_white(proven.after)),
                      png(difference_picture(proven.before, proven.after, kGain))};
}

void add_pictures(const std::string& before, NestTrial& trial, ReportedNest& nest,
                  lottie::pictures::DrawingBudget& budget) {
    try {
        const Proven proven = prove(before, trial.after, trial.nest.composition, trial.nest.report.findings, budget);
        trial.nest.proof = proven.proof;
        nest.worst = worst_frame(proven);
    } catch (const std::runtime_error& refused) {
        trial.nest.proof_problem = refused.what();
    }
}

std::string extension_of(const AnimationFile& input) {
    if (!input.form()) return ".json";
    return input.is_collection() ? ".lottie" : ".tgs";
}

class Reporter {
  public:
    // `input` has one animation.
    Reporter(const Options& options, const host::runner::PluginModule& plugin, const AnimationFile& input,
             const Console& console)
        : options_(options),
          console_(console),
          budget_{options.picture_time},
          input_(input),
          text_(input.text(0)),
          limits_(file_limits(options.script_time)),
          document_(parse_input(text_)),
          comp_(find_composition(document_, options.composition)),
          nests_(find_nests(comp_, options.layers)),
          checker_(document_, plugin, options.answers, limits_, input.asked_for()) {
        print_warnings(console, input.label(0), document_.warnings());
    }

    Report report() {
        describe();
        for (Layer* nest : nests_) check_alone(*nest);
        unnest_together();
        console_.show_progress("");
        return std::move(report_);
    }

  private:
    void describe() {
        report_.file = input_.label(0);
        report_.command = run_command_line(options_, extension_of(input_));
        report_.composition = document_.comp_id(comp_);
        report_.composition_name = comp_.name();
        report_.width = comp_.width();
        report_.height = comp_.height();
        report_.frame_rate = comp_.frame_rate();
        auto extracted = lottie::looks::extract_composition(text_, report_.composition);
        report_.first_frame = extracted.first_frame;
        report_.bytes_before = text_.size();
        report_.before = std::move(extracted.text);
        report_.stack_before = stack_of(document_, comp_);
        for (const Layer* nest : nests_) {
            inner_stacks_[static_cast<std::size_t>(nest->index())] = stack_of(document_, *nest->source()->comp());
        }
    }

    void check_alone(Layer& layer) {
        ReportedNest& nest = report_.nests.emplace_back();
        console_.show_progress(drawing_progress(report_.nests.size() - 1, nests_.size(), "nest"));
        NestTrial trial = checker_.check(layer, true);
        add_pictures(text_, trial, nest, budget_);
        findings_.insert(findings_.end(), trial.nest.report.findings.begin(), trial.nest.report.findings.end());
        nest.checked = std::move(trial.nest);
    }

    void unnest_together() {
        if (nests_.empty()) return take_unchanged();
        console_.show_progress("pictures: all nests together");
        Trial trial = checker_.trials().run(comp_, nests_);
        const std::string after = document_.write();
        report_.stack_after = stack_of(document_, comp_);
        checker_.trials().undo();
        for (std::size_t place = 0; place < report_.stack_after.size(); ++place) {
            set_origin(report_.stack_after[place], trial.change.after.at(place));
        }
        report_.bytes_after = after.size();
        report_.messages = std::move(trial.record.reports);
        for (const host::scriptui::Alert& alert : trial.record.alerts) report_.messages.push_back(alert.message);
        report_.messages.insert(report_.messages.end(), trial.record.log.begin(), trial.record.log.end());
        compare_with(after);
    }

    void take_unchanged() {
        report_.bytes_after = report_.bytes_before;
        report_.after = report_.before;
        report_.stack_after = report_.stack_before;
        std::size_t place = 0;
        for (StackLayer& layer : report_.stack_after) layer.origin = {Origin::Kind::kept, place++, 0};
    }

    // A copy is of its original's type.
    void set_origin(StackLayer& layer, const Origin& origin) {
        layer.origin = origin;
        if (origin.kind == Origin::Kind::copied) layer.type = inner_stacks_.at(origin.nest).at(origin.layer).type;
    }

    void compare_with(const std::string& after) {
        report_.after = lottie::looks::extract_composition(after, report_.composition).text;
        try {
            const Proven proven = prove(text_, after, report_.composition, findings_, budget_);
            report_.proof = proven.proof;
            report_.worst = worst_frame(proven);
        } catch (const std::runtime_error& refused) {
            report_.proof_problem = refused.what();
        }
    }

    const Options& options_;
    const Console& console_;
    lottie::pictures::DrawingBudget budget_;
    const AnimationFile& input_;
    const std::string& text_;
    const FileLimits limits_;
    lottie::document::Document document_;
    Comp& comp_;
    std::vector<Layer*> nests_;
    NestChecker checker_;
    std::map<std::size_t, std::vector<StackLayer>> inner_stacks_;  // by the nest's place
    std::vector<lottie::looks::Finding> findings_;
    Report report_;
};

void refuse_own_input(const Options& options) {
    if (!options.output.empty() && options.output != kStandardStream &&
        host::base::are_same_file(options.file(), options.output)) {
        throw Failure(ExitCode::usage, "the report would replace the animation: give -o another name");
    }
}

// A page shows one animation.
void refuse_several(const AnimationFile& input) {
    if (input.count() == 1) return;
    std::string ids;
    for (std::size_t i = 0; i < input.count(); ++i) ids += (i == 0 ? "" : ", ") + in_quotes(input.id(i));
    throw Failure(ExitCode::usage, "holds " + counted(input.count(), "animation") +
                                       ", and a page shows one: give --animation and its id, one of " + ids);
}

// Throws Failure.
Report report_on(const AnimationFile& input, const Options& options, const host::runner::PluginModule& plugin,
                 const Console& console) {
    try {
        return Reporter(options, plugin, input, console).report();
    } catch (const Failure& failure) {
        throw failure.in(input.place(0));
    }
}

void print_report(const Console& console, const Report& report, const std::string& output) {
    std::array<std::size_t, 3> counts{};
    for (const ReportedNest& nest : report.nests) ++counts[static_cast<std::size_t>(nest.checked.report.verdict)];
    std::string sentence = counted(report.nests.size(), "nest") + ": " + std::to_string(counts[0]) + " exact, " +
                           std::to_string(counts[1]) + " equal to the eye, " + std::to_string(counts[2]) + " changing";
    if (!output.empty()) sentence += "; written to " + output;
    console.say(counts[2] == 0 ? Tone::good : Tone::warning, report.file, sentence);
}

}  // namespace

ExitCode report(const Options& options, const Console& console) {
    return guarded(console, shown_name(options.file()), [&] {
        refuse_own_input(options);
        refuse_to_fill_terminal(options);
        const AnimationPlayer player = load_player();
        const host::runner::PluginModule plugin = load_plugin();
        const AnimationFile input(options.file(), options.animation);
        refuse_several(input);
        const Report report = report_on(input, options, plugin, console);
        write_output(options, console, options.file(), report_page(report, player));
        print_report(console, report, options.output == kStandardStream ? "" : options.output);
        return report.verdict() == Verdict::changes ? ExitCode::look_changes : ExitCode::done;
    });
}

}  // namespace cli
