// Settings that outlive a script: text by section and key, in memory or in a file.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace host::script {

// what() is one sentence that names the file and the reason.
class SettingsError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class Settings {
  public:
    using Section = std::map<std::string, std::string, std::less<>>;
    using Sections = std::map<std::string, Section, std::less<>>;

    // Lost with the object.
    static Settings in_memory() { return Settings(); }
    // Reads the file. A missing file counts as empty; so does one that cannot be read or parsed, which problems() then
    // reports. The first save() creates the file and its folder.
    explicit Settings(std::filesystem::path file);

    // The same values, without the file.
    Settings in_memory_copy() const;

    // Null if there is none. Valid until the next save().
    const std::string* find(std::string_view section, std::string_view key) const;

    // Stores the value, then merges it into the file, which other processes may have changed. The file is replaced
    // atomically; a damaged one is kept next to it as NAME.damaged. Throws SettingsError if the file cannot be written;
    // the value is stored in memory even then.
    void save(const std::string& section, const std::string& key, const std::string& value);

    // Sentences about what went wrong while reading.
    const std::vector<std::string>& problems() const { return problems_; }

  private:
    Settings() = default;
    Sections read_file();

    std::optional<std::filesystem::path> file_;
    Sections sections_;
    bool is_damaged_ = false;
    std::vector<std::string> problems_;
};

}  // namespace host::script
