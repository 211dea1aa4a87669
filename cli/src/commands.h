// What each command does. They return the exit code; a Failure thrown by one concerns no single file.
#pragma once

#include "cli/arguments/options.h"
#include "cli/shared/console.h"
#include "cli/shared/failure.h"

namespace cli {

// Un-nests and writes. Works through the files and returns the highest code. A file with an error is not written and
// does not stop the others.
ExitCode run(const Options& options, const Console& console);

// Makes flat what keeps its look, and writes. Like run(); `look_changes` if a nest had to stay.
ExitCode flatten(const Options& options, const Console& console);

// What un-nesting would do to the look. Every nest is un-nested by itself, judged, and put back; only the verdicts are
// written, to standard output. Returns the highest code of all files; `look_changes` if a look would change.
ExitCode check(const Options& options, const Console& console);

// The same for one animation, as a page, with all nests un-nested together too. Codes like those of check().
ExitCode report(const Options& options, const Console& console);

// Lists compositions, layers and nests on standard output.
ExitCode list(const Options& options, const Console& console);

// Plays a journal to the plug-in.
ExitCode replay(const Options& options, const Console& console);

// Draws the plug-in's options dialog, or lists the names of its controls. Nothing done to the dialog is remembered.
ExitCode draw_dialog(const Options& options, const Console& console);

}  // namespace cli
