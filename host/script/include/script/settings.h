// Settings that scripts keep beyond their run: texts by section and key, in memory or in a file.
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

    // Forgotten with the object.
    static Settings in_memory() { return Settings(); }
    // Reads the file; one that is missing counts as empty, and so does one that cannot be read or understood, which
    // problems() then tells. The file and its folder come into being with the first save().
    explicit Settings(std::filesystem::path file);

    // The same values, forgotten with the copy.
    Settings in_memory_copy() const;

    // Null if there is none. The pointer holds until the next save().
    const std::string* find(std::string_view section, std::string_view key) const;

    // Keeps the value here, then writes the file, with what other processes have saved there in the meantime. The file
    // is replaced as a whole, so nobody ever reads half of it; a damaged one is kept beside it as NAME.damaged. Throws
    // SettingsError when the file cannot be written; the value is kept here even so.
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
