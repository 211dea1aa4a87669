// `exflate run`: un-nests and writes.
#include "commands.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "cli/shared/animation_file.h"
#include "cli/shared/dialog_operator.h"
#include "cli/shared/files_at_work.h"
#include "cli/shared/selection.h"
#include "cli/shared/trial.h"
#include "cli/shared/unnest.h"
#include "run/judged_run.h"
#include "run/look_hint.h"
#include "run/mended_run.h"
#include "run/run_journal.h"
#include "run/summary.h"
#include "shared/dialog_window.h"
#include "shared/installed_parts.h"
#include "shared/settings_file.h"

namespace cli {
namespace {

using host::model::Comp;
using Tone = Console::Tone;

// What was done to one animation of a file.
struct AnimationResult {
    std::string label;
    std::string composition = {};
    UnnestRecord record = {};
    std::vector<JudgedNest> judged = {};          // of a judged run
    std::string look_hint = {};                   // of a run without judging
    std::string mended = {};                      // the animation, of a run that mends
    Sizes sizes = {};                             // of the text, unpacked
    ReferencedLayers::Outcome interactions = {};  // what became of layers that state machines refer to
    std::string skip_reason = {};                 // empty: the animation was changed
};

// One animation as it will be in its file, and what the text borrows from.
struct WrittenAnimation {
    std::optional<lottie::document::Document> document = {};  // of a plain file
    lottie::document::OutputText written = {};
};

class Run {
  public:
    Run(const Options& options, const Console& console, const host::runner::PluginModule& plugin,
        host::script::Settings& settings)
        : options_(options),
          console_(console),
          plugin_(plugin),
          settings_(settings),
          journal_(options.journal, other_files()) {
        if (options.dialog) windows_ = open_dialog_windows();
    }

    FileResult one_file(const std::string& file) {
        std::vector<AnimationResult> results;
        try {
            return unnest_and_write(file, results);
        } catch (const Failure& failure) {
            return print_problem(file, results, failure);
        } catch (const std::exception& problem) {  // such as running out of memory
            return print_problem(file, results, unforeseen(problem));
        }
    }

    ExitCode all_files() {
        return write_all_files(
            options_, console_, [this](const std::string& file) { return one_file(file); }, sum_of_runs);
    }

    // Throws Failure (failed).
    void finish_journal() { journal_.finish(); }

  private:
    // Everything that the run reads or writes besides its journal.
    std::vector<std::string> other_files() const {
        std::vector<std::string> files = {find_plugin().string()};
        for (const std::string& file : options_.files) {
            if (file != kStandardStream) files.push_back(file);
            if (const std::string output = output_for(options_, file); output != kStandardStream)
                files.push_back(output);
        }
        return files;
    }

    FileResult print_problem(const std::string& file, const std::vector<AnimationResult>& results,
                             const Failure& failure) const {
        for (const AnimationResult& result : results) {
            print_messages_of(result);
            if (failure.code() == ExitCode::failed) print_log(console_, result.label, result.record);
        }
        print_failure(console_, shown_name(file), failure);
        FileResult failed{failure.code()};
        failed.totals.files = failed.totals.failed = 1;
        return failed;
    }

    // Not if a person saw them in a window.
    void print_messages_of(const AnimationResult& result) const {
        if (windows_ == nullptr) print_messages(console_, result.label, result.record);
    }

    // All animations of the file; none after a Failure. `results` has an entry for each that was started.
    FileResult unnest_and_write(const std::string& file, std::vector<AnimationResult>& results) {
        AnimationFile input(file, options_.animation);
        std::vector<WrittenAnimation> animations = unnest_each(input, results);
        const bool is_changed = std::any_of(results.begin(), results.end(),
                                            [](const AnimationResult& result) { return result.skip_reason.empty(); });
        const std::string output = output_for(options_, file);
        std::vector<lottie::document::OutputText> texts;
        for (WrittenAnimation& animation : animations) texts.push_back(std::move(animation.written));
        std::vector<CurrentNames> names = {input.names_in_others()};
        for (const AnimationResult& result : results) names.push_back(result.interactions.names);
        const NewNames new_names = new_layer_names(names);
        const lottie::document::OutputText bytes = input.with(std::move(texts), new_names.names);
        if (!options_.dry_run && (is_changed || !options_.in_place))
            write_output(options_, console_, file, bytes.pieces());
        const FileTotals totals = totals_of(results, input.byte_count(), bytes.size());

        const std::string shown_output = output == kStandardStream || options_.dry_run ? "" : output;
        for (const AnimationResult& result : results) print_result(result, input.form() ? "" : shown_output);
        print_losses(shown_name(file), new_names.losses);
        if (!is_changed || !input.form()) return {.totals = totals};
        print_packed(console_, shown_name(file), {input.byte_count(), bytes.size()}, shown_output);
        if (input.form() == lottie::packed::Form::tgs && input.byte_count() <= kMaxStickerBytes &&
            bytes.size() > kMaxStickerBytes) {
            print_too_large(console_, shown_name(file), bytes.size());
        }
        return {.totals = totals};
    }

    static FileTotals totals_of(const std::vector<AnimationResult>& results, std::size_t bytes_before,
                                std::size_t bytes_after) {
        FileTotals totals;
        totals.files = 1;
        for (const AnimationResult& result : results) {
            totals.unnested += result.record.nests;
            for (const JudgedNest& nest : result.judged) totals.kept += nest.kept_because.empty() ? 0U : 1U;
        }
        totals.bytes_before = bytes_before;
        totals.bytes_after = bytes_after;
        return totals;
    }

    void print_losses(const std::string& label, const std::vector<lottie::looks::Finding>& losses) const {
        for (const lottie::looks::Finding& loss : losses)
            console_.say(Tone::warning, label, loss.sentence + ": " + loss.way_out);
    }

    void print_result(const AnimationResult& result, const std::string& output) const {
        if (!result.skip_reason.empty()) return console_.say(Tone::plain, result.label, result.skip_reason);
        print_messages_of(result);
        print_log(console_, result.label, result.record);
        print_judged_nests(console_, result.label, result.judged, options_.verbose);
        print_losses(result.label, result.interactions.losses);
        print_success(console_, result.label, result.composition, result.record, result.sizes, output);
        if (!result.look_hint.empty()) console_.say(Tone::warning, result.label, result.look_hint);
    }

    // The resulting animations. One without what the options name stays as it was if another has it.
    std::vector<WrittenAnimation> unnest_each(AnimationFile& input, std::vector<AnimationResult>& results) {
        std::vector<WrittenAnimation> animations;
        std::optional<Failure> first_missing;
        bool any_matches = false;
        for (std::size_t i = 0; i < input.count(); ++i) {
            AnimationResult& result = results.emplace_back(AnimationResult{.label = input.label(i)});
            try {
                animations.push_back(unnest_one(input, i, result));
                any_matches = true;
            } catch (const SelectionNotFound& missing) {
                if (!first_missing) first_missing = missing.in(input.place(i));
                result.skip_reason = std::string("skipped: ") + missing.what();
                result.interactions = {names_in(input.text(i), input.references()), {}};
                animations.emplace_back().written.append(input.text(i));
            } catch (const Failure& failure) {
                throw failure.in(input.place(i));
            }
        }
        if (!any_matches) throw *first_missing;
        return animations;
    }

    // The resulting animation; unchanged if it has no nest. Throws Failure; SelectionNotFound before anything is run.
    WrittenAnimation unnest_one(AnimationFile& input, std::size_t i, AnimationResult& result) {
        WrittenAnimation animation;
        animation.document = parse_input(input.take_text(i));
        print_warnings(console_, result.label, animation.document->warnings());
        animation.written = unnest_in(*animation.document, input.references(), result);
        if (!input.form()) return animation;
        WrittenAnimation text_only;  // packing needs only the text; the document is freed early
        text_only.written.append(animation.written.text());
        return text_only;
    }

    lottie::document::OutputText unnest_in(lottie::document::Document& document,
                                           const lottie::packed::References& references, AnimationResult& result) {
        const ReferencedLayers referenced(document, references);
        result.interactions = referenced.outcome();
        if (document.is_passed_on()) result.interactions.names = names_in(document.text(), references);
        Comp& comp = find_composition(document, options_.composition);
        const auto nests = find_nests(comp, options_.layers);
        result.composition = comp.name();
        if (nests.empty()) {
            result.skip_reason = "composition " + in_quotes(comp.name()) + " has no nests: nothing to do";
            return write_animation(document);
        }
        LookHint hint(document, comp, nests, options_.recursive);
        unnest_all(document, comp, nests, references, referenced, result);
        lottie::document::OutputText written;
        if (options_.mend) {
            written.append(result.mended);
        } else {
            written = write_animation(document);
            if (!is_judged(options_)) result.look_hint = hint.after(result.record, written);
        }
        result.sizes = {document.text().size(), written.size()};
        return written;
    }

    // If it throws, the project must not be written.
    void unnest_all(lottie::document::Document& document, Comp& comp, const std::vector<host::model::Layer*>& nests,
                    const lottie::packed::References& references, const ReferencedLayers& referenced,
                    AnimationResult& result) {
        DialogOperator answers(options_.answers);
        host::scriptui::DialogDriver& dialogs = windows_ != nullptr ? *windows_ : answers;
        const FileLimits limits = file_limits(options_.script_time);
        const RunContext context{plugin_,
                                 settings_,
                                 dialogs,
                                 limits,
                                 [&](host::runner::Session& session) { journal_.observe(session, result.label); },
                                 references};
        try {
            if (is_judged(options_)) {
                result.judged = unnest_judged(document, document.text(), context, comp, nests, options_, result.record);
                result.interactions = referenced.outcome();
            } else {
                document.project().undo().keep_no_history();
                host::runner::Session session(document.project(), settings_, dialogs, limits.scripts);
                context.observe(session);
                start_plugin(session, plugin_, result.record);
                Origins origins(comp, nests);
                unnest(session, comp, nests, options_.recursive, *limits.work, result.record);
                result.interactions = referenced.outcome();
                if (options_.mend) {
                    const auto change = origins.change_to(comp, document.comp_id(comp));
                    MendedRun mended = mend_run(document.text(), write_animation(document).text(), change, limits.work);
                    result.mended = std::move(mended.text);
                    result.look_hint = std::move(mended.summary);
                    const lottie::document::WrittenLayers layers = write_layers(document, comp);
                    referenced.add(
                        follow_mending(result.interactions, {change, layers.layers},
                                       {mended.change, {mended.layers.begin(), mended.layers.end()}}, references),
                        result.interactions);
                }
            }
        } catch (const lottie::looks::TooMuchWork& refused) {
            throw too_much_work(refused);
        } catch (const NothingChanged& refusal) {
            refuse_faulty_content(document);
            if (windows_ == nullptr || !refusal.is_cancelled()) throw;
            throw Failure(ExitCode::failed, "cancelled in the dialog");
        } catch (const Failure&) {
            refuse_faulty_content(document);
            throw;
        }
    }

    const Options& options_;
    const Console& console_;
    const host::runner::PluginModule& plugin_;
    host::script::Settings& settings_;
    std::unique_ptr<host::scriptui::DialogDriver> windows_;  // null: the flags answer
    RunJournal journal_;
};

}  // namespace

ExitCode run(const Options& options, const Console& console) {
    const host::runner::PluginModule plugin = load_plugin();
    host::script::Settings settings = open_settings(console);
    Run run(options, console, plugin, settings);
    const ExitCode highest = run.all_files();
    run.finish_journal();
    return highest;
}

}  // namespace cli
