// `exflate check`: what un-nesting would do to the look.
#include "check/checked_file.h"
#include "commands.h"

#include <algorithm>
#include <map>
#include <utility>

#include "cli/flatten/flattening.h"
#include "cli/shared/animation_file.h"
#include "cli/shared/file_io.h"
#include "cli/shared/selection.h"
#include "cli/shared/trial.h"
#include "shared/installed_parts.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;

std::vector<Layer*> nests_to_check(const lottie::document::Document& document, const Options& options) {
    if (!options.layers.empty() || !options.composition.empty()) {
        return find_nests(find_composition(document, options.composition), options.layers);
    }
    std::vector<Layer*> nests;
    for (const Comp* comp : document.project().comps()) {
        const auto more = nests_of(*comp);
        nests.insert(nests.end(), more.begin(), more.end());
    }
    return nests;
}

void add_proof(const std::string& before, NestTrial& trial, lottie::pictures::DrawingBudget& budget) {
    CheckedNest& nest = trial.nest;
    try {
        nest.proof = prove(before, trial.after, nest.composition, nest.report.findings, budget).proof;
    } catch (const std::runtime_error& refused) {
        nest.proof_problem = refused.what();
    }
}

// The main composition is drawn once, and once the one whose nests were asked for. Others that became flat as parts of
// the whole have nobody left who knows their size; a nest that stays has nothing to show.
void add_proofs(const std::string& before, const std::string& after, bool is_whole, const Console& console,
                lottie::pictures::DrawingBudget& budget, CheckedFile& checked) {
    std::map<std::string, NestTrial> drawn;
    drawn[""];
    const auto is_drawn = [&](const CheckedNest& nest) {
        return nest.flattened->kept_because.empty() && (nest.composition.empty() || !is_whole);
    };
    for (const CheckedNest& nest : checked.nests) {
        if (!is_drawn(nest)) continue;
        auto& findings = drawn[nest.composition].nest.report.findings;
        findings.insert(findings.end(), nest.report.findings.begin(), nest.report.findings.end());
    }
    std::size_t done = 0;
    for (auto& [composition, trial] : drawn) {
        console.show_progress(drawing_progress(done++, drawn.size(), "composition"));
        trial.nest.composition = composition;
        trial.after = after;
        add_proof(before, trial, budget);
    }
    for (CheckedNest& nest : checked.nests) {
        if (!is_drawn(nest)) continue;
        nest.proof = drawn[nest.composition].nest.proof;
        nest.proof_problem = drawn[nest.composition].nest.proof_problem;
    }
    checked.proof = drawn[""].nest.proof;
    checked.proof_problem = drawn[""].nest.proof_problem;
}

// Throws Failure.
void check_flattening(const std::string& text, const Options& options, const host::runner::PluginModule& plugin,
                      const Console& console, const lottie::packed::AskedFor& asked_for,
                      lottie::pictures::DrawingBudget& budget, CheckedFile& checked) {
    Options as_to_draw = options;
    as_to_draw.keep_unused = true;
    const Flattened flattened = flatten_animation(text, plugin, as_to_draw, asked_for);
    print_warnings(console, checked.name, flattened.warnings);
    for (const FlattenedNest& nest : flattened.nests) {
        CheckedNest& one = checked.nests.emplace_back();
        one.composition = nest.composition;
        one.composition_name = nest.composition_name;
        one.number = nest.number;
        one.layers = nest.layers;
        one.bytes_after = flattened.text.size();
        one.report = {nest.number - 1, nest.name, nest.verdict, nest.findings, 0};
        one.flattened = {nest.kept_because, nest.mended};
    }
    const bool is_whole = options.composition.empty() && options.layers.empty();
    if (options.prove) add_proofs(text, flattened.text, is_whole, console, budget, checked);
}

// Throws Failure.
void check_animation(std::string text, const Options& options, const host::runner::PluginModule& plugin,
                     const Console& console, const lottie::packed::AskedFor& asked_for,
                     lottie::pictures::DrawingBudget& budget, CheckedFile& checked) {
    checked.bytes = text.size();
    if (options.flatten) return check_flattening(text, options, plugin, console, asked_for, budget, checked);
    lottie::document::Document document = parse_input(std::move(text));
    print_warnings(console, checked.name, document.warnings());
    const FileLimits limits = file_limits(options.script_time);
    const std::vector<Layer*> nests = nests_to_check(document, options);
    if (nests.empty()) return;
    NestChecker checker(document, plugin, options.answers, limits, asked_for);
    for (Layer* nest : nests) {
        NestTrial trial = checker.check(*nest, options.prove);
        if (options.prove) {
            console.show_progress(drawing_progress(checked.nests.size(), nests.size(), "nest"));
            add_proof(document.text(), trial, budget);
        }
        checked.nests.push_back(std::move(trial.nest));
    }
}

// `check` fills in one report, and what it throws becomes part of that.
template <class Check>
void check_guarded(CheckedFile& checked, Check check) {
    try {
        check();
    } catch (const Failure& failure) {
        checked.failure = failure;
    } catch (const std::exception& problem) {
        checked.failure = unforeseen(problem);
    }
}

// Each animation of the file. One that lacks what the options name is left out if another has it.
std::vector<CheckedFile> check_file(const std::string& file, const Options& options,
                                    const host::runner::PluginModule& plugin, const Console& console) {
    std::vector<CheckedFile> all;
    std::vector<CheckedFile> lacking;
    lottie::pictures::DrawingBudget budget{options.picture_time};
    CheckedFile whole;
    whole.name = shown_name(file);
    check_guarded(whole, [&] {
        AnimationFile input(file, options.animation);
        for (std::size_t i = 0; i < input.count(); ++i) {
            CheckedFile checked;
            checked.name = input.label(i);
            bool fits = true;
            check_guarded(checked, [&] {
                try {
                    check_animation(input.take_text(i), options, plugin, console, input.asked_for(), budget, checked);
                } catch (const SelectionNotFound&) {
                    fits = false;
                    throw;
                }
            });
            (fits ? all : lacking).push_back(std::move(checked));
        }
    });
    console.show_progress("");
    if (whole.failure) all.push_back(std::move(whole));
    return all.empty() ? lacking : all;
}

std::string report(const std::vector<CheckedFile>& files, CheckFormat format) {
    switch (format) {
        case CheckFormat::json:
            return check_json(files);
        case CheckFormat::junit:
            return check_junit(files);
        default:
            return check_text(files);
    }
}

ExitCode code_of(const CheckedFile& file) {
    if (file.failure) return file.failure->code();
    for (const CheckedNest& nest : file.nests) {
        if (nest.flattened && !nest.flattened->kept_because.empty()) return ExitCode::look_changes;
    }
    return file.verdict() == lottie::looks::Verdict::changes ? ExitCode::look_changes : ExitCode::done;
}

}  // namespace

lottie::looks::Verdict CheckedFile::verdict() const {
    auto worst = lottie::looks::Verdict::exact;
    for (const CheckedNest& nest : nests) worst = std::max(worst, nest.report.verdict);
    return worst;
}

ExitCode check(const Options& options, const Console& console) {
    const host::runner::PluginModule plugin = load_plugin();
    std::vector<CheckedFile> files;
    ExitCode highest = ExitCode::done;
    for (const std::string& file : options.files) {
        for (CheckedFile& checked : check_file(file, options, plugin, console)) {
            if (checked.failure) print_failure(console, checked.name, *checked.failure);
            highest = std::max(highest, code_of(checked));
            files.push_back(std::move(checked));
        }
    }
    write_result(report(files, options.format));
    return highest;
}

}  // namespace cli
