// Trial runs: what the command would do.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "cli/shared/dialog_answers.h"
#include "cli/shared/interactions.h"
#include "cli/shared/unnest.h"
#include "document/document.h"
#include "looks/judge.h"
#include "runner/plugin_module.h"
#include "script/engine.h"
#include "script/settings.h"
#include "scriptui/dialog_driver.h"

namespace cli {

struct Trial {
    lottie::looks::StackChange change;
    lottie::document::WrittenLayers written;  // of the composition
    std::vector<std::string> deleted;         // ids of the deleted compositions
    std::size_t byte_count = 0;               // of the whole animation; 0 if not asked for
    UnnestRecord record;
    ReferencedLayers::Outcome interactions;  // for state machines and themes
};

// What the work on one file may use, whatever it is.
struct FileLimits {
    host::script::Limits scripts;  // for every engine that works on it
    std::shared_ptr<lottie::looks::Work> work = std::make_shared<lottie::looks::Work>();
};

// All scripts together have that many seconds of processor time; one script may take a quarter of it.
FileLimits file_limits(double script_time);

// What a run needs besides the project; all of it must outlive the run.
struct RunContext {
    const host::runner::PluginModule& plugin;
    host::script::Settings& settings;
    host::scriptui::DialogDriver& dialogs;
    const FileLimits& limits;
    std::function<void(host::runner::Session&)> observe = [](host::runner::Session&) {
    };                                           // the session, before it starts
    lottie::packed::References references = {};  // by what surrounds the animation
};

// Un-nests nests of one animation, any number of times in one session.
class Trials {
  public:
    // Everything given must outlive it.
    Trials(lottie::document::Document& document, const RunContext& context);
    // The dialog is answered like this and remembers nothing.
    Trials(lottie::document::Document& document, const host::runner::PluginModule& plugin, const DialogAnswers& answers,
           const FileLimits& limits, const lottie::packed::References& references = {});
    ~Trials();

    // Un-nests the nests of one composition in one run and leaves the project that way. Throws Failure as unnest()
    // does, and for faults in the input's content; the project is then unchanged.
    Trial run(host::model::Comp& comp, const std::vector<host::model::Layer*>& nests, bool counts_bytes = true);

    // Undoes the newest run.
    void undo();

  private:
    struct OwnContext;

    std::unique_ptr<OwnContext> own_context_;  // null if one was given
    lottie::document::Document& document_;
    const RunContext& context_;
    host::runner::Session session_;
    bool is_started_ = false;
};

// The first of the gravest findings, as its code and sentence; empty if there is none.
std::string main_reason(const std::vector<lottie::looks::Finding>& findings);

// Adds to a nest's report what state machines and themes lose, whichever nest causes it.
void add_losses(lottie::looks::NestReport& report, const std::vector<lottie::looks::Finding>& losses);

// What the trial does to looks and interactions. Throws TooMuchWork.
std::vector<lottie::looks::NestReport> compare(lottie::looks::Judge& judge, const Trial& trial);

}  // namespace cli
