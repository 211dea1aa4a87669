// The files in a folder, however deep.
#include <algorithm>

#include "base/files.h"
#include "folder_entries.h"

namespace host::base {

namespace fs = std::filesystem;

std::vector<std::string> files_below(const fs::path& folder, const fs::path& except) {
    std::vector<std::string> files;
    std::vector<std::string> open = {""};
    while (!open.empty()) {
        const std::string below = std::move(open.back());
        open.pop_back();
        std::vector<FolderEntry> entries;
        try {
            entries = entries_of(folder / below);
        } catch (const FileError& error) {
            if (below.empty()) throw;
            throw FileError("cannot be listed", below.substr(0, below.size() - 1) + ": " + error.reason());
        }
        for (const FolderEntry& entry : entries) {
            if (entry.name.starts_with('.')) continue;
            const std::string name = below + entry.name;
            if (entry.kind == FileKind::file) files.push_back(name);
            if (entry.kind == FileKind::folder && (except.empty() || !are_same_file(folder / name, except)))
                open.push_back(name + '/');
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace host::base
