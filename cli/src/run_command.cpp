// `exflate run`: un-nests and writes.
#include "cli/run_command.h"

#include <algorithm>
#include <filesystem>
#include <memory>

#include "cli/dialog_operator.h"
#include "cli/dialog_window.h"
#include "cli/documents.h"
#include "cli/file_io.h"
#include "cli/judged_run.h"
#include "cli/plugin_location.h"
#include "cli/run_journal.h"
#include "cli/script_limits.h"
#include "cli/selection.h"
#include "cli/settings_file.h"
#include "cli/summary.h"
#include "cli/unnest.h"

namespace cli {
namespace {

namespace fs = std::filesystem;
using host::model::Comp;
using Tone = Console::Tone;

class Run {
  public:
    Run(const RunOptions& options, const Console& console, const host::runner::PluginModule& plugin,
        host::script::Settings& settings)
        : options_(options),
          console_(console),
          plugin_(plugin),
          settings_(settings),
          journal_(options.journal, other_files()) {
        if (options.dialog) windows_ = open_dialog_windows();
    }

    ExitCode one_file(const std::string& file) {
        const std::string name = shown_name(file);
        Record record;
        try {
            unnest_and_write(file, record);
            return ExitCode::done;
        } catch (const Failure& failure) {
            return tell(name, record, failure);
        } catch (const std::exception& unforeseen) {  // such as running out of memory
            return tell(name, record, Failure(ExitCode::failed, unforeseen.what()));
        }
    }

    // Throws Failure (failed).
    void finish_journal() { journal_.finish(); }

  private:
    // All that the run reads or writes beside its journal.
    std::vector<std::string> other_files() const {
        std::vector<std::string> files = {find_plugin().string()};
        for (const std::string& file : options_.files) {
            if (file != kStandardStream) files.push_back(file);
            if (const std::string output = output_for(file); output != kStandardStream) files.push_back(output);
        }
        return files;
    }

    ExitCode tell(const std::string& name, const Record& record, const Failure& failure) const {
        tell_what_was_said(name, record);
        if (failure.code() == ExitCode::failed) tell_log(console_, name, record);
        tell_failure(console_, name, failure);
        return failure.code();
    }

    // Nothing that a person has seen in a window.
    void tell_what_was_said(const std::string& name, const Record& record) const {
        if (windows_ == nullptr) tell_messages(console_, name, record);
    }

    void unnest_and_write(const std::string& file, Record& record) {
        const std::string name = shown_name(file);
        const std::string input = read_input(file);
        host::lottie::Document document = parse_input(input);
        Comp& comp = find_composition(document, options_.composition);
        const auto nests = options_.layers.empty() ? nests_of(comp) : find_nests(comp, options_.layers);
        const std::string output = output_for(file);
        if (nests.empty()) {
            if (!options_.in_place) write(output, input);
            console_.say(Tone::plain, name, "composition " + in_quotes(comp.name()) + " holds no nest: nothing to do");
            return;
        }
        const Ledger ledger = unnest_all(document, input, comp, nests, name, record);
        const std::string result = document.write();
        refuse_faulty_content(document);
        write(output, result);
        tell_what_was_said(name, record);
        tell_log(console_, name, record);
        tell_ledger(console_, name, ledger);
        tell_success(console_, name, comp, record, {input.size(), result.size()},
                     output == kStandardStream ? "" : output);
    }

    // Leaves the project as it was if anything fails. The ledger is that of a judged run, else empty.
    Ledger unnest_all(host::lottie::Document& document, const std::string& input, Comp& comp,
                      const std::vector<host::model::Layer*>& nests, const std::string& name, Record& record) {
        DialogOperator answers(options_.answers);
        host::script::DialogDriver& dialogs = windows_ != nullptr ? *windows_ : answers;
        const host::script::Limits limits = script_limits(options_.script_time);
        const Surroundings surroundings{plugin_, settings_, dialogs, limits,
                                        [&](host::runner::Session& session) { journal_.observe(session, name); }};
        Ledger ledger;
        try {
            if (is_judged(options_)) {
                ledger = unnest_judged(document, input, surroundings, comp, nests, options_);
                record = ledger.record;
            } else {
                host::runner::Session session(document.project(), settings_, dialogs, limits);
                surroundings.observe(session);
                unnest(session, plugin_, comp, nests, options_.recursive, record);
            }
            return ledger;
        } catch (const NothingChanged&) {
            document.project().undo().undo_all();
            refuse_faulty_content(document);
            if (windows_ == nullptr || !record.alerts.empty()) throw;
            throw Failure(ExitCode::failed, "cancelled in the dialog");
        } catch (const Failure&) {
            document.project().undo().undo_all();
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

    void write(const std::string& output, const std::string& bytes) const {
        if (!options_.output_folder.empty()) prepare_folder(options_.output_folder);
        write_result(output, bytes);
    }

    const RunOptions& options_;
    const Console& console_;
    const host::runner::PluginModule& plugin_;
    host::script::Settings& settings_;
    std::unique_ptr<host::script::DialogDriver> windows_;  // null: the flags answer
    RunJournal journal_;
};

}  // namespace

ExitCode run(const RunOptions& options, const Console& console) {
    try {
        const host::runner::PluginModule plugin = load_plugin();
        host::script::Settings settings = open_settings(console);
        Run run(options, console, plugin, settings);
        ExitCode highest = ExitCode::done;
        for (const std::string& file : options.files) highest = std::max(highest, run.one_file(file));
        run.finish_journal();
        return highest;
    } catch (const Failure& failure) {
        console.say(Tone::error, "exflate", failure.what());
        return failure.code();
    }
}

}  // namespace cli
