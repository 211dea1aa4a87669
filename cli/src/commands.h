// What each command does. The exit code comes back; a Failure that leaves one concerns no single file.
#pragma once

#include "cli/arguments/options.h"
#include "cli/shared/console.h"
#include "cli/shared/failure.h"

namespace cli {

// Un-nests and writes. Works through the files; the highest code of all. A file with an error is not written and does
// not stop the others.
ExitCode run(const Options& options, const Console& console);

// Makes flat what keeps its look that way, and writes. As run(); `look_changes` where a nest had to stay.
ExitCode flatten(const Options& options, const Console& console);

// What un-nesting would do to the look. Every nest is un-nested by itself, judged, and put back; nothing is written but
// the verdicts on standard output. The highest code of all files; `look_changes` when a look would change.
ExitCode check(const Options& options, const Console& console);

// The same as a page to look at, of one animation, with all nests un-nested together too. Codes as of check().
ExitCode report(const Options& options, const Console& console);

// Compositions, layers and nests on standard output.
ExitCode list(const Options& options, const Console& console);

// Plays a journal to the plug-in.
ExitCode replay(const Options& options, const Console& console);

// The plug-in's options dialog as a picture, or the names of its controls. Nothing that is done to the dialog is remembered.
ExitCode draw_dialog(const Options& options, const Console& console);

}  // namespace cli
