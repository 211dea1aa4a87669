// Running the command to see what it would do.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "cli/shared/dialog_answers.h"
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
    std::vector<std::string> deleted;         // ids of the compositions that went
    std::size_t byte_count = 0;               // of the whole animation
    UnnestRecord record;
};

// What the scripts of one file may use, for every engine that works on it. Seconds of the processor's time for all of
// them together; one may take a quarter of it.
host::script::Limits script_limits(double seconds);

// What a run needs besides the project; all of it must outlive the run.
struct RunContext {
    const host::runner::PluginModule& plugin;
    host::script::Settings& settings;
    host::scriptui::DialogDriver& dialogs;
    const host::script::Limits& limits;
    std::function<void(host::runner::Session&)> observe = [](host::runner::Session&) {
    };  // the session, before it starts
};

// Un-nests nests of one animation, in one session as often as wanted.
class Trials {
  public:
    // Everything given must outlive it.
    Trials(lottie::document::Document& document, const RunContext& context);
    // The dialog is answered like this, and nothing of it remembered.
    Trials(lottie::document::Document& document, const host::runner::PluginModule& plugin, const DialogAnswers& answers,
           const host::script::Limits& limits);
    ~Trials();

    // Un-nests the nests of one composition in one run and leaves the project that way. Throws Failure as unnest()
    // does, and for faults in the input's content; the project is then as it was before.
    Trial run(host::model::Comp& comp, const std::vector<host::model::Layer*>& nests);

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

// The first finding of the greatest weight, as its code and sentence; empty if there is none.
std::string main_reason(const std::vector<lottie::looks::Finding>& findings);

// What the trial does to the looks. Throws Failure (bad_input) for a file that makes too much work.
std::vector<lottie::looks::NestReport> compare(lottie::looks::Judge& judge, const Trial& trial);

}  // namespace cli
