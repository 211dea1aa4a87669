// Runs the plug-in's command on nests, once or until none is left.
#pragma once

#include <string>
#include <vector>

#include "cli/shared/failure.h"
#include "looks/work.h"
#include "model/comp.h"
#include "runner/session.h"

namespace cli {

// What the runs on one composition did and reported.
struct UnnestRecord {
    std::size_t nests = 0;            // that were un-nested
    std::size_t layers_made = 0;      // new in the composition
    std::size_t sources_deleted = 0;  // nested compositions
    std::size_t sources_kept = 0;
    std::size_t places_lost = 0;  // nests that came out of others and then lost their parent
    std::vector<host::scriptui::Alert> alerts;
    std::vector<std::string> reports;
    std::vector<std::string> log;
};

// The command ended without an error but changed nothing: it was cancelled, or it refused the dialog's answers and gave
// its reasons in alerts.
class NothingChanged : public Failure {
  public:
    explicit NothingChanged(const std::vector<host::scriptui::Alert>& alerts);
    bool is_cancelled() const { return is_cancelled_; }

  private:
    bool is_cancelled_;
};

// "TITLE: MESSAGE".
std::string in_words(const host::scriptui::Alert& alert);

// The plug-in says of a source in use that it was not deleted, though a later run may delete it. Of several such
// notices keeps one, or none if no source was kept in the end.
void settle_source_notices(UnnestRecord& record);

// The message for a file that takes more work than is allowed, from commands that cannot leave the rest as it is.
Failure too_much_work(const lottie::looks::TooMuchWork& refused);

// Before the first un-nesting of a session. Throws Failure (failed).
void start_plugin(host::runner::Session& session, const host::runner::PluginModule& plugin, UnnestRecord& record);

// Runs the plug-in's command on the nests, in their order; with `recursive` again on the nests that came out of them,
// each round in one run. `record` holds what was done and reported, even after an error. Throws Failure (failed) for
// any error that the plug-in or the host reports; NothingChanged; Failure (usage) for an expansion out of all
// proportion, before anything is run; TooMuchWork before a run that takes more than is left of `work`.
void unnest(host::runner::Session& session, host::model::Comp& comp, std::vector<host::model::Layer*> nests,
            bool recursive, lottie::looks::Work& work, UnnestRecord& record);

}  // namespace cli
