// `exflate run`: un-nests and writes.
#include "commands.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>

#include "cli/file_io.h"
#include "cli/shared/animation_file.h"
#include "cli/shared/dialog_operator.h"
#include "cli/shared/selection.h"
#include "cli/shared/trial.h"
#include "cli/shared/unnest.h"
#include "cli/workers.h"
#include "run/judged_run.h"
#include "run/run_journal.h"
#include "shared/dialog_window.h"
#include "shared/installed_parts.h"
#include "shared/settings_file.h"
#include "shared/summary.h"

namespace cli {
namespace {

namespace fs = std::filesystem;
using host::model::Comp;
using Tone = Console::Tone;

// What was done with one animation of a file.
struct Work {
    std::string label;
    std::string composition = {};
    Record record = {};
    Ledger ledger = {};     // of a judged run, else empty
    Sizes sizes = {};       // of the text, unpacked
    std::string idle = {};  // why there was nothing to do; empty: the animation was changed
};

// One animation as it will stand in its file, and what that points at.
struct Animated {
    std::optional<lottie::document::Document> document = {};  // of a plain file
    lottie::document::Written written = {};
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

    ExitCode one_file(const std::string& file) {
        std::vector<Work> works;
        try {
            unnest_and_write(file, works);
            return ExitCode::done;
        } catch (const Failure& failure) {
            return tell(file, works, failure);
        } catch (const std::exception& unforeseen) {  // such as running out of memory
            return tell(file, works, Failure(ExitCode::failed, unforeseen.what()));
        }
    }

    // Several at once where the options say so. Files that meet in one are done one after another.
    ExitCode all_files() {
        const std::size_t count = options_.files.size();
        if (options_.jobs > 1 && count > 1 && !have_files_in_common()) return files_at_once();
        ExitCode highest = ExitCode::done;
        for (const std::string& file : options_.files) highest = std::max(highest, one_file(file));
        return highest;
    }

    // Throws Failure (failed).
    void finish_journal() { journal_.finish(); }

  private:
    bool have_files_in_common() const {
        FileUse use;
        for (std::size_t i = 0; i < options_.files.size(); ++i) {
            const std::string& file = options_.files[i];
            if (!use.note(i, file) || !use.note(i, output_for(file))) return true;
        }
        return false;
    }

    ExitCode files_at_once() {
        const std::size_t count = options_.files.size();
        ExitCode highest = ExitCode::done;
        std::string line;
        work_on_all(count, {.most_at_once = options_.jobs,
                            .work = [this](std::size_t i) { return one_file(options_.files[i]); },
                            .tell =
                                [&](std::size_t i, const Ended& ended) {
                                    console_.show_progress("");
                                    console_.pass_on(ended.said);
                                    if (!ended.code) {
                                        tell_failure(console_, shown_name(options_.files[i]),
                                                     Failure(ExitCode::failed, ended.problem));
                                    }
                                    highest = std::max(highest, ended.code.value_or(ExitCode::failed));
                                    console_.show_progress(line);
                                },
                            .progress =
                                [&](std::size_t done) {
                                    line = std::to_string(done) + " of " + counted(count, "file") + " done";
                                    console_.show_progress(line);
                                }});
        console_.show_progress("");
        return highest;
    }

    // All that the run reads or writes beside its journal.
    std::vector<std::string> other_files() const {
        std::vector<std::string> files = {find_plugin().string()};
        for (const std::string& file : options_.files) {
            if (file != kStandardStream) files.push_back(file);
            if (const std::string output = output_for(file); output != kStandardStream) files.push_back(output);
        }
        return files;
    }

    ExitCode tell(const std::string& file, const std::vector<Work>& works, const Failure& failure) const {
        for (const Work& work : works) {
            tell_what_was_said(work);
            if (failure.code() == ExitCode::failed) tell_log(console_, work.label, work.record);
        }
        tell_failure(console_, shown_name(file), failure);
        return failure.code();
    }

    // Nothing that a person has seen in a window.
    void tell_what_was_said(const Work& work) const {
        if (windows_ == nullptr) tell_messages(console_, work.label, work.record);
    }

    // All animations of the file, or after a Failure none. `works` has an entry for each that was begun.
    void unnest_and_write(const std::string& file, std::vector<Work>& works) {
        AnimationFile input(file, options_.animation);
        std::vector<Animated> animations = unnest_each(input, works);
        const bool is_changed =
            std::any_of(works.begin(), works.end(), [](const Work& work) { return work.idle.empty(); });
        const std::string output = output_for(file);
        std::vector<lottie::document::Written> texts;
        for (Animated& animation : animations) texts.push_back(std::move(animation.written));
        const lottie::document::Written bytes = input.with(std::move(texts));
        if (is_changed || !options_.in_place) write(output, bytes.pieces());

        const std::string shown_output = output == kStandardStream ? "" : output;
        for (const Work& work : works) tell_work(work, input.form() ? "" : shown_output);
        if (!is_changed || !input.form()) return;
        tell_packed(console_, shown_name(file), {input.byte_count(), bytes.size()}, shown_output);
        if (input.form() == lottie::packed::Form::tgs && input.byte_count() <= kMostStickerBytes &&
            bytes.size() > kMostStickerBytes) {
            tell_too_large(console_, shown_name(file), bytes.size());
        }
    }

    void tell_work(const Work& work, const std::string& output) const {
        if (!work.idle.empty()) return console_.say(Tone::plain, work.label, work.idle);
        tell_what_was_said(work);
        tell_log(console_, work.label, work.record);
        tell_ledger(console_, work.label, work.ledger);
        tell_success(console_, work.label, work.composition, work.record, work.sizes, output);
    }

    // The animations after it. One that lacks what the options name stays as it was if another has it.
    std::vector<Animated> unnest_each(AnimationFile& input, std::vector<Work>& works) {
        std::vector<Animated> animations;
        std::optional<Failure> lack;  // of the first one that lacks something
        bool one_fits = false;
        for (std::size_t i = 0; i < input.count(); ++i) {
            Work& work = works.emplace_back(Work{.label = input.label(i)});
            try {
                animations.push_back(unnest_one(input, i, work));
                one_fits = true;
            } catch (const NothingFits& nothing) {
                if (!lack) lack = Failure(nothing.code(), nothing.what(), input.place(i));
                work.idle = std::string("passed over: ") + nothing.what();
                animations.emplace_back().written.append(input.text(i));
            } catch (const Failure& failure) {
                throw Failure(failure.code(), failure.what(), input.place(i) + failure.place());
            }
        }
        if (!one_fits) throw *lack;
        return animations;
    }

    // The animation after it; as it was if it has no nest. Throws Failure; NothingFits before anything is run.
    Animated unnest_one(AnimationFile& input, std::size_t i, Work& work) {
        Animated animated;
        animated.document = parse_input(input.take_text(i));
        animated.written = unnest_in(*animated.document, work);
        if (!input.form()) return animated;
        Animated alone;  // packing wants the text; a document is kept for no longer than it must be
        alone.written.append(animated.written.text());
        return alone;
    }

    lottie::document::Written unnest_in(lottie::document::Document& document, Work& work) {
        Comp& comp = find_composition(document, options_.composition);
        const auto nests = options_.layers.empty() ? nests_of(comp) : find_nests(comp, options_.layers);
        work.composition = comp.name();
        if (nests.empty()) {
            work.idle = "composition " + in_quotes(comp.name()) + " holds no nest: nothing to do";
            return document.write_in_pieces();
        }
        work.ledger = unnest_all(document, document.text(), comp, nests, work);
        lottie::document::Written result = document.write_in_pieces();
        refuse_faulty_content(document);
        work.sizes = {document.text().size(), result.size()};
        return result;
    }

    // The ledger is that of a judged run, else empty. Nobody may write the project if it fails.
    Ledger unnest_all(lottie::document::Document& document, const std::string& input, Comp& comp,
                      const std::vector<host::model::Layer*>& nests, Work& work) {
        Record& record = work.record;
        DialogOperator answers(options_.answers);
        host::scriptui::DialogDriver& dialogs = windows_ != nullptr ? *windows_ : answers;
        const host::script::Limits limits = script_limits(options_.script_time);
        const Surroundings surroundings{plugin_, settings_, dialogs, limits,
                                        [&](host::runner::Session& session) { journal_.observe(session, work.label); }};
        Ledger ledger;
        try {
            if (is_judged(options_)) {
                ledger = unnest_judged(document, input, surroundings, comp, nests, options_);
                record = ledger.record;
            } else {
                document.project().undo().keep_no_history();
                host::runner::Session session(document.project(), settings_, dialogs, limits);
                surroundings.observe(session);
                unnest(session, plugin_, comp, nests, options_.recursive, record);
            }
            return ledger;
        } catch (const NothingChanged&) {
            refuse_faulty_content(document);
            if (windows_ == nullptr || !record.alerts.empty()) throw;
            throw Failure(ExitCode::failed, "cancelled in the dialog");
        } catch (const Failure&) {
            refuse_faulty_content(document);
            throw;
        }
    }

    std::string output_for(const std::string& file) const {
        if (options_.in_place) return file;
        if (!options_.output_folder.empty()) {
            return (fs::path(options_.output_folder) / fs::path(file).filename()).string();
        }
        return options_.output.empty() ? std::string(kStandardStream) : options_.output;
    }

    void write(const std::string& output, Pieces bytes) const {
        if (!options_.output_folder.empty()) prepare_folder(options_.output_folder);
        write_result(output, bytes);
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
