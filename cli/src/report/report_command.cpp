// `exflate report`: what un-nesting does to an animation, as a page to look at.
#include "commands.h"

#include <array>
#include <utility>

#include "base/files.h"
#include "cli/flatten/flattening.h"
#include "cli/shared/animation_file.h"
#include "cli/shared/file_io.h"
#include "cli/shared/files_at_work.h"
#include "cli/shared/selection.h"
#include "cli/shared/trial.h"
#include "looks/extract_composition.h"
#include "report/report_page.h"
#include "shared/installed_parts.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;
using lottie::looks::StackChange;
using Tone = Console::Tone;

constexpr int kGain = 4;  // makes small differences visible

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
          plugin_(plugin),
          console_(console),
          budget_{options.picture_time},
          input_(input),
          text_(input.text(0)),
          document_(parse_input(text_)),
          comp_(find_composition(document_, options.composition)) {
        print_warnings(console, input.label(0), document_.warnings());
    }

    Report report() {
        describe();
        if (options_.flatten) {
            make_flat();
        } else {
            un_nest();
        }
        console_.show_progress("");
        return std::move(report_);
    }

  private:
    void describe() {
        report_.file = input_.label(0);
        report_.command = command_line(options_, extension_of(input_));
        report_.composition = document_.comp_id(comp_);
        report_.composition_name = comp_.name();
        report_.width = comp_.width();
        report_.height = comp_.height();
        report_.frame_rate = comp_.frame_rate();
        auto extracted = lottie::looks::extract_composition(text_, report_.composition);
        report_.first_frame = extracted.first_frame;
        report_.bytes_before = text_.size();
        report_.before = std::move(extracted.text);
        report_.layers_before = tree_of(text_, nullptr);
    }

    // A document by itself: to look at layers may read what is in them.
    std::vector<TreeLayer> tree_of(const std::string& text, lottie::looks::Lineage* lineage) const {
        const lottie::document::Document document = parse_input(text);
        return layer_tree(document, find_composition(document, report_.composition), lineage);
    }

    void make_flat() {
        console_.show_progress("making it flat");
        const Flattened flattened = flatten_animation(text_, plugin_, options_, input_.references());
        for (const FlattenedNest& nest : flattened.nests) {
            report_.nests.push_back({as_flattened(nest, flattened.text.size()), std::nullopt});
            if (!nest.is_kept()) findings_.insert(findings_.end(), nest.findings.begin(), nest.findings.end());
        }
        report_.flat = {totals_of(flattened), flattened.succeeded()};
        report_.messages = {last_line(flattened)};
        console_.show_progress("pictures: before and after");
        take_after(flattened.text, flattened.steps);
    }

    void un_nest() {
        const std::vector<Layer*> nests = find_nests(comp_, options_.layers);
        const FileLimits limits = file_limits(options_.script_time);
        NestChecker checker(document_, plugin_, options_.answers, limits, input_.references());
        for (Layer* nest : nests) {
            console_.show_progress(drawing_progress(report_.nests.size(), nests.size(), "nest"));
            check_alone(checker, *nest);
        }
        if (nests.empty()) return take_after(text_, {});
        console_.show_progress("pictures: all nests together");
        Trial trial = checker.trials().run(comp_, nests);
        report_.messages = std::move(trial.record.reports);
        for (const host::scriptui::Alert& alert : trial.record.alerts) report_.messages.push_back(alert.message);
        report_.messages.insert(report_.messages.end(), trial.record.log.begin(), trial.record.log.end());
        take_after(document_.write(), {trial.change});
    }

    void check_alone(NestChecker& checker, Layer& layer) {
        NestTrial trial = checker.check(layer, budget_.time.count() > 0);
        ReportedNest& nest = report_.nests.emplace_back();
        add_pictures(text_, trial, nest, budget_);
        findings_.insert(findings_.end(), trial.nest.report.findings.begin(), trial.nest.report.findings.end());
        nest.checked = std::move(trial.nest);
    }

    // The whole animation afterwards, and what was done to it.
    void take_after(const std::string& after, const std::vector<StackChange>& steps) {
        report_.bytes_after = after.size();
        lottie::looks::Lineage lineage(text_);
        for (const StackChange& step : steps) lineage.add(step);
        report_.layers_after = tree_of(after, &lineage);
        if (after == text_) {
            report_.after = report_.before;
            return;
        }
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
    const host::runner::PluginModule& plugin_;
    const Console& console_;
    lottie::pictures::DrawingBudget budget_;
    const AnimationFile& input_;
    const std::string& text_;
    lottie::document::Document document_;
    Comp& comp_;
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
    } catch (const lottie::looks::TooMuchWork& refused) {
        throw too_much_work(refused).in(input.place(0));
    }
}

std::string verdicts(const Report& report) {
    std::array<std::size_t, 3> counts{};
    for (const ReportedNest& nest : report.nests) ++counts[static_cast<std::size_t>(nest.checked.report.verdict)];
    return counted(report.nests.size(), "nest") + ": " + std::to_string(counts[0]) + " exact, " +
           std::to_string(counts[1]) + " equal to the eye, " + std::to_string(counts[2]) + " changing";
}

void print_report(const Console& console, const Report& report, const std::string& output) {
    std::string sentence = report.flat ? report.messages.front() : verdicts(report);
    if (!output.empty()) sentence += "; written to " + output;
    console.say(report.succeeded() ? Tone::good : Tone::warning, report.file, sentence);
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
        return report.succeeded() ? ExitCode::done : ExitCode::look_changes;
    });
}

}  // namespace cli
