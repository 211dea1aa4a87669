// A folder of its own for a test, and programs run in it as people run them.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace test {

struct Finished {
    int exit_code = -1;  // 128 + the number of the signal that ended it
    std::string out;
    std::string err;
};

// How a program is started; members left empty have their ordinary values.
struct Start {
    std::vector<std::string> arguments = {};
    std::string input = {};                               // of standard input
    std::map<std::string, std::string> environment = {};  // beside PATH and XDG_CONFIG_HOME
    std::string out_file = {};                            // standard output goes here instead of being kept
    bool without_settings_folder = false;                 // neither XDG_CONFIG_HOME nor HOME
    bool reader_is_gone = false;                          // standard output is a pipe whose reading end is closed
    long most_bytes_per_file = -1;                        // no file can grow beyond
    bool has_no_output = false;                           // standard output is closed
    long most_memory = -1;                                // bytes of address space
    bool errors_to_terminal = false;                      // standard error is a terminal
    bool output_to_terminal = false;                      // standard output is one
};

class Sandbox {
  public:
    Sandbox();
    explicit Sandbox(const std::string& animation);  // in a.json
    ~Sandbox();
    Sandbox(const Sandbox&) = delete;

    const std::filesystem::path& folder() const { return folder_; }
    std::filesystem::path path(const std::string& name) const { return folder_ / name; }
    // Returns the name, to be used as an argument: programs run in the folder.
    std::string write(const std::string& name, const std::string& text) const;
    std::string read(const std::string& name) const;
    // Names of everything in the folder but the sandbox's own files, sorted.
    std::vector<std::string> names(const std::string& sub_folder = ".") const;

    Finished run(const std::string& program, const Start& start) const;

  private:
    std::filesystem::path folder_;
    std::filesystem::path own_;  // settings and kept streams
};

// The command under test.
Finished exflate(const Sandbox& sandbox, const std::vector<std::string>& arguments, const std::string& input = "");
Finished exflate(const Sandbox& sandbox, const Start& start);

// Runs a copy of the command in the sandbox's folder bin, with none of its parts beside it.
Finished lone_exflate(const Sandbox& sandbox, const Start& start);

// The command in a sandbox of its own, with the animation in a.json as its last argument.
Finished exflate_on(const std::string& animation, std::vector<std::string> arguments = {});

}  // namespace test
