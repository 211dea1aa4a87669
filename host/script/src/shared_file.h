// A small file that several processes read and replace.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace host::script {

// All of these throw SettingsError with a sentence that names the file.

// Empty if there is no such file.
std::string read_shared_file(const std::filesystem::path& file);

// Writes a new file beside it, brings it to the disk and puts it in the old one's place: readers see the old or the new
// text.
void replace_shared_file(const std::filesystem::path& file, std::string_view text);

// Moves the file away, over whatever has the other name.
void keep_aside(const std::filesystem::path& file, const std::filesystem::path& other);

// Keeps other processes from saving to the file's folder, which is made if it is missing. Released by the destructor,
// and by the system when the process ends.
class FolderLock {
  public:
    explicit FolderLock(const std::filesystem::path& file);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
    int folder_ = -1;
};

}  // namespace host::script
