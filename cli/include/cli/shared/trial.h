// Running the command to see what it would do.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/shared/dialog_answers.h"
#include "cli/shared/unnest.h"
#include "document/document.h"
#include "looks/audit.h"
#include "runner/plugin_module.h"
#include "script/engine.h"
#include "script/settings.h"
#include "scriptui/dialog_driver.h"

namespace cli {

struct Trial {
    std::string after;  // the animation as it would be written
    lottie::looks::StackChange change;
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
    };  // each session, before it starts
};

// Un-nests the nests of one composition in one run and leaves the project that way. Throws Failure as unnest() does,
// and for faults in the input's content; the project is then as it was before.
Trial try_unnesting(lottie::document::Document& document, const RunContext& context, host::model::Comp& comp,
                    const std::vector<host::model::Layer*>& nests);

// The same with the dialog answered like this, and nothing remembered of it.
Trial try_unnesting(lottie::document::Document& document, const host::runner::PluginModule& plugin,
                    const DialogAnswers& answers, const host::script::Limits& limits, host::model::Comp& comp,
                    const std::vector<host::model::Layer*>& nests);

// Undoes the newest trial.
void undo_trial(lottie::document::Document& document);

}  // namespace cli
