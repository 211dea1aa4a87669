// Running the command to see what it would do.
#pragma once

#include <string>
#include <vector>

#include "audit/audit.h"
#include "cli/dialog_answers.h"
#include "cli/unnest.h"
#include "lottie/document.h"
#include "runner/plugin_module.h"

namespace cli {

struct Trial {
    std::string after;  // the animation as it would be written
    host::audit::StackChange change;
    Record record;
};

// Un-nests the nests of one composition in one run, each with the dialog's answers, and leaves the project that way.
// What the dialog remembers is not touched. Throws Failure as unnest() does, and for faults in the input's content; the
// project is then as it was before.
Trial try_unnesting(host::lottie::Document& document, const host::runner::PluginModule& plugin,
                    const DialogAnswers& answers, host::model::Comp& comp,
                    const std::vector<host::model::Layer*>& nests);

// Takes the newest trial back.
void take_back(host::lottie::Document& document);

}  // namespace cli
