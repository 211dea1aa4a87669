// Folders among the files that a command works on.
#pragma once

#include "cli/arguments/options.h"

namespace cli {

// The options with each folder replaced by the animations in it, however deep. They are recognized by their content, as
// names prove nothing. Whatever is in the output folder is left out. Throws Failure: bad input for a folder that cannot
// be listed or holds no animation, usage if a folder's results have nowhere to go, or two would go to the same place.
Options with_files_of_folders(Options options);

}  // namespace cli
