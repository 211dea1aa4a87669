// `exflate check`: what un-nesting would do to the look.
#include "check/checked_file.h"
#include "check/tolerance.h"
#include "commands.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "cli/flatten/flattening.h"
#include "cli/shared/animation_file.h"
#include "cli/shared/file_io.h"
#include "cli/shared/files_at_work.h"
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

// Draws the main composition, and the one whose nests were asked for. The size of others that became flat as parts of
// the whole is no longer known; a nest that stays has nothing to show.
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
                      const Console& console, const lottie::packed::References& references,
                      lottie::pictures::DrawingBudget& budget, CheckedFile& checked) {
    Options as_to_draw = options;
    as_to_draw.keep_unused = true;
    const Flattened flattened = flatten_animation(text, plugin, as_to_draw, references);
    print_warnings(console, checked.name, flattened.warnings);
    for (const FlattenedNest& nest : flattened.nests)
        checked.nests.push_back(as_flattened(nest, flattened.text.size()));
    checked.left = flattened.nests_left;
    const bool is_whole = options.composition.empty() && options.layers.empty();
    if (options.prove) add_proofs(text, flattened.text, is_whole, console, budget, checked);
}

// Throws Failure.
void check_animation(std::string text, const Options& options, const host::runner::PluginModule& plugin,
                     const Console& console, const lottie::packed::References& references,
                     lottie::pictures::DrawingBudget& budget, CheckedFile& checked) {
    checked.bytes = text.size();
    if (options.flatten) return check_flattening(text, options, plugin, console, references, budget, checked);
    lottie::document::Document document = parse_input(std::move(text));
    print_warnings(console, checked.name, document.warnings());
    const FileLimits limits = file_limits(options.script_time);
    const std::vector<Layer*> nests = nests_to_check(document, options);
    if (nests.empty()) return;
    NestChecker checker(document, plugin, options.answers, limits, references);
    for (Layer* nest : nests) {
        NestTrial trial = checker.check(*nest, options.prove && budget.time.count() > 0);
        if (options.prove) {
            console.show_progress(drawing_progress(checked.nests.size(), nests.size(), "nest"));
            add_proof(document.text(), trial, budget);
        }
        checked.nests.push_back(std::move(trial.nest));
    }
}

// `check` fills in one report; what it throws becomes part of it.
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

// Each animation of the file. One without what the options name is left out if another has it.
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
                    check_animation(input.take_text(i), options, plugin, console, input.references(), budget, checked);
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

ExitCode code_of(const CheckedFile& file) {
    if (file.failure) return file.failure->code();
    return file.totals().failing > 0 ? ExitCode::look_changes : ExitCode::done;
}

std::string part_of_report(const CheckedFile& file, CheckFormat format, const TextForm& form) {
    switch (format) {
        case CheckFormat::json:
            return check_json(file);
        case CheckFormat::junit:
            return check_junit(file);
        default:
            return check_text(file, form);
    }
}

}  // namespace

lottie::looks::Verdict CheckedFile::verdict() const {
    auto worst = lottie::looks::Verdict::exact;
    for (const CheckedNest& nest : nests) worst = std::max(worst, nest.report.verdict);
    return worst;
}

FileTotals CheckedFile::totals() const {
    FileTotals totals;
    totals.files = 1;
    totals.failed = failure ? 1 : 0;
    totals.nests = nests.size();
    totals.left = left;
    totals.bytes_before = totals.bytes_after = bytes;
    for (const CheckedNest& nest : nests) {
        std::size_t* const counts[] = {&totals.exact, &totals.equal_to_the_eye, &totals.changing};
        ++*counts[static_cast<std::size_t>(nest.report.verdict)];
        totals.failing += nest.fails() ? 1U : 0U;
        if (!nest.flattened) continue;
        ++(nest.is_kept() ? totals.kept : totals.unnested);
        totals.mended += nest.is_kept() || nest.flattened->mended.empty() ? 0U : 1U;
        totals.bytes_after = nest.bytes_after;
    }
    return totals;
}

ExitCode check(const Options& options, const Console& console) {
    const Tolerance tolerance(options.baseline, options.allowed);
    const host::runner::PluginModule plugin = load_plugin();
    const TextForm form{options.quiet, options.verbose, Console::for_output()};
    const auto check_one = [&](const std::string& file) {
        FileResult result;
        for (CheckedFile& checked : check_file(file, options, plugin, console)) {
            tolerance.mark(checked);
            if (checked.failure) print_failure(console, checked.name, *checked.failure);
            result.code = std::max(result.code, code_of(checked));
            result.totals += checked.totals();
            result.texts.push_back(part_of_report(checked, options.format, form));
        }
        return result;
    };
    std::vector<std::string> parts;
    const auto take = [&](std::vector<std::string> more) {
        if (options.format == CheckFormat::text) {
            for (const std::string& text : more) write_result(text);
        } else {
            parts.insert(parts.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
        }
    };
    const auto crashed = [&](const std::string& file, const Failure& failure) {
        CheckedFile checked;
        checked.name = shown_name(file);
        checked.failure = failure;
        return part_of_report(checked, options.format, form);
    };
    const FileResults all = work_on_files(options, console, check_one, take, crashed);
    if (options.format == CheckFormat::json) write_result(check_json_report(parts, all.totals, options));
    if (options.format == CheckFormat::junit) write_result(check_junit_report(parts, all.totals));
    const bool has_several = options.files.size() > 1 || options.has_folders;
    if (options.format == CheckFormat::text && has_several && !options.quiet)
        write_result(check_text_sum(all.totals, options));
    return all.highest;
}

}  // namespace cli
