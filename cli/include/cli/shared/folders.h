// Folders among the files that a command works on.
#pragma once

#include "cli/arguments/options.h"

namespace cli {

// The options with the animations in each folder, however deep, in the folder's place: told by what is in a file, for
// names prove nothing. What is in the output folder is left out. Throws Failure: bad input for a folder that cannot be
// listed or holds no animation, usage where a folder's results have no place to go, or two the same.
Options with_files_of_folders(Options options);

}  // namespace cli
