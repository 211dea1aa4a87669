// Settings that scripts keep beyond their run.
#include "script/settings.h"

#include <utility>

#include "base/files.h"
#include "settings_text.h"

namespace host::script {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMaxBytes = std::size_t{16} << 20;

[[noreturn]] void give_up(const char* doing, const fs::path& path, const base::FileError& error) {
    throw SettingsError(std::string("Cannot ") + doing + " \"" + path.string() + "\": " + error.reason() + ".");
}

fs::path folder_of(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : ".";
}

std::string read_whole(const fs::path& file) try {
    return base::read_own_file(file, kMaxBytes);
} catch (const base::FileError& error) {
    give_up("read settings file", file, error);
}

// Readers see either the old text or the new.
void replace(const fs::path& file, std::string_view text) try {
    const std::string prefix = file.filename().string() + '.';
    base::replace_file(file, text, {.temporary_prefix = prefix});
} catch (const base::FileError& error) {
    give_up("write settings file", file, error);
}

void keep_aside(const fs::path& file, const fs::path& other) try {
    base::move_file(file, other);
} catch (const base::FileError& error) {
    give_up("move damaged settings file", file, error);
}

base::FolderLock lock_folder_of(const fs::path& file) try {
    return base::FolderLock(folder_of(file));
} catch (const base::FileError& error) {
    give_up("make or open settings folder", folder_of(file), error);
}

std::filesystem::path beside(const std::filesystem::path& file, const char* suffix) {
    std::filesystem::path other = file;
    other += suffix;
    return other;
}

}  // namespace

// Where a symbolic link leads, so that saving replaces the file and not the link.
Settings::Settings(std::filesystem::path file) : file_(base::real_path(file)) {
    try {
        sections_ = read_file();
    } catch (const SettingsError& e) {
        problems_.emplace_back(e.what());
    }
}

// What the file says now.
Settings::Sections Settings::read_file() {
    ReadSettings read = read_settings(read_whole(*file_));
    const bool was_damaged = std::exchange(is_damaged_, read.damaged_line != 0);
    if (is_damaged_ && !was_damaged) {
        problems_.push_back("Settings file \"" + file_->string() + "\" is damaged in line " +
                            std::to_string(read.damaged_line) + "; its settings are not used.");
    }
    return std::move(read.sections);
}

Settings Settings::in_memory_copy() const {
    Settings copy;
    copy.sections_ = sections_;
    return copy;
}

const std::string* Settings::find(std::string_view section, std::string_view key) const {
    const auto found = sections_.find(section);
    if (found == sections_.end()) return nullptr;
    const auto value = found->second.find(key);
    return value != found->second.end() ? &value->second : nullptr;
}

void Settings::save(const std::string& section, const std::string& key, const std::string& value) {
    sections_[section][key] = value;
    if (!file_) return;

    const base::FolderLock lock = lock_folder_of(*file_);
    Sections now = read_file();
    const auto written = now.find(section);
    const bool is_written = written != now.end() && written->second.contains(key) && written->second[key] == value;
    if (!is_written) {
        now[section][key] = value;
        if (is_damaged_) keep_aside(*file_, beside(*file_, ".damaged"));
        replace(*file_, write_settings(now));
        is_damaged_ = false;
    }
    sections_ = std::move(now);
}

}  // namespace host::script
