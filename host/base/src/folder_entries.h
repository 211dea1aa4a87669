// What stands in a folder itself.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/files.h"

namespace host::base {

struct FolderEntry {
    std::string name;
    FileKind kind;  // of the entry itself: a symbolic link is `other`
};

// In any order. Throws FileError, "cannot be listed: REASON".
std::vector<FolderEntry> entries_of(const std::filesystem::path& folder);

}  // namespace host::base
