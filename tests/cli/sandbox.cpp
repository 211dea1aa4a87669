// A folder of its own for a test, and programs run in it as people run them.
#include "sandbox.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>

namespace test {
namespace {

namespace fs = std::filesystem;

fs::path make_folder() {
    std::string name = (fs::path(testing::TempDir()) / "exflate-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder can be made");
    return name;
}

std::string read_file(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write_file(const fs::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

// In the child: descriptor `as` becomes the opened file.
void open_as(int as, const fs::path& file, int flags) {
    const int fd = open(file.c_str(), flags, 0666);
    if (fd < 0 || dup2(fd, as) < 0) _exit(99);
}

// In the child: the writing end of a pipe whose reading end is closed.
void open_broken_pipe(int as) {
    int ends[2];
    if (pipe(ends) != 0 || close(ends[0]) != 0 || dup2(ends[1], as) < 0) _exit(99);
}

// A terminal that leaves bytes as they are, seen from both sides.
struct Terminal {
    Terminal() : outer(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        if (outer < 0 || grantpt(outer) != 0 || unlockpt(outer) != 0)
            throw std::runtime_error("no terminal can be made");
        inner = open(ptsname(outer), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios ways{};
        if (inner < 0 || tcgetattr(inner, &ways) != 0) throw std::runtime_error("no terminal can be opened");
        cfmakeraw(&ways);
        tcsetattr(inner, TCSANOW, &ways);
    }
    ~Terminal() {
        close(inner);
        close(outer);
    }
    Terminal(const Terminal&) = delete;

    // What has been written to it; more than fits its buffer blocks the writer.
    std::string text() const {
        std::string result;
        char bytes[4096];
        fcntl(outer, F_SETFL, O_NONBLOCK);
        for (ssize_t count = 0; (count = read(outer, bytes, sizeof bytes)) > 0;) {
            result.append(bytes, static_cast<std::size_t>(count));
        }
        return result;
    }

    int outer;
    int inner = -1;
};

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

}  // namespace

Sandbox::Sandbox() : folder_(make_folder()), own_(make_folder()) {}

Sandbox::Sandbox(const std::string& animation) : Sandbox() {
    write("a.json", animation);
}

Sandbox::~Sandbox() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
    fs::remove_all(own_, ignored);
}

std::string Sandbox::write(const std::string& name, const std::string& text) const {
    write_file(path(name), text);
    return name;
}

std::string Sandbox::read(const std::string& name) const {
    return read_file(path(name));
}

std::vector<std::string> Sandbox::names(const std::string& sub_folder) const {
    std::vector<std::string> result;
    for (const auto& entry : fs::directory_iterator(path(sub_folder))) result.push_back(entry.path().filename());
    std::sort(result.begin(), result.end());
    return result;
}

Finished Sandbox::run(const std::string& program, const Start& start) const {
    write_file(own_ / "in", start.input);
    std::vector<std::string> arguments = {program};
    arguments.insert(arguments.end(), start.arguments.begin(), start.arguments.end());
    std::vector<std::string> environment = {std::string("PATH=") + std::getenv("PATH")};
    if (!start.without_settings_folder) environment.push_back("XDG_CONFIG_HOME=" + (own_ / "config").string());
    for (const std::string name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {  // of a program built with them
        if (const char* options = std::getenv(name.c_str())) environment.push_back(name + '=' + options);
    }
    for (const auto& [name, value] : start.environment) environment.push_back(name + '=' + value);
    const fs::path out = start.out_file.empty() ? own_ / "out" : folder_ / start.out_file;

    const auto terminal_if = [](bool wanted) { return wanted ? std::make_unique<Terminal>() : nullptr; };
    const std::unique_ptr<Terminal> terminal = terminal_if(start.errors_to_terminal);
    const std::unique_ptr<Terminal> out_terminal = terminal_if(start.output_to_terminal);

    const pid_t child = fork();
    if (child == 0) {
        if (chdir(folder_.c_str()) != 0) _exit(99);
        open_as(STDIN_FILENO, own_ / "in", O_RDONLY);
        if (start.reader_is_gone) {
            open_broken_pipe(STDOUT_FILENO);
        } else if (out_terminal) {
            if (dup2(out_terminal->inner, STDOUT_FILENO) < 0) _exit(99);
        } else {
            open_as(STDOUT_FILENO, out, O_WRONLY | O_CREAT | O_TRUNC);
        }
        if (terminal) {
            if (dup2(terminal->inner, STDERR_FILENO) < 0) _exit(99);
        } else {
            open_as(STDERR_FILENO, own_ / "err", O_WRONLY | O_CREAT | O_TRUNC);
        }
        if (start.most_bytes_per_file >= 0) {
            const auto most = static_cast<rlim_t>(start.most_bytes_per_file);
            const rlimit limit = {most, most};
            std::signal(SIGXFSZ, SIG_IGN);  // the write fails instead
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(99);
        }
        if (start.has_no_output) close(STDOUT_FILENO);
        if (start.most_memory >= 0) {
            const auto most = static_cast<rlim_t>(start.most_memory);
            const rlimit limit = {most, most};
            if (setrlimit(RLIMIT_AS, &limit) != 0) _exit(99);
        }
        execve(program.c_str(), pointers(arguments).data(), pointers(environment).data());
        _exit(98);
    }
    int status = 0;
    waitpid(child, &status, 0);
    Finished finished;
    finished.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    if (out_terminal) {
        finished.out = out_terminal->text();
    } else if (start.out_file.empty() && !start.reader_is_gone) {
        finished.out = read_file(out);
    }
    finished.err = terminal ? terminal->text() : read_file(own_ / "err");
    return finished;
}

Finished exflate(const Sandbox& sandbox, const std::vector<std::string>& arguments, const std::string& input) {
    return exflate(sandbox, {.arguments = arguments, .input = input});
}

Finished exflate_on(const std::string& animation, std::vector<std::string> arguments) {
    arguments.emplace_back("a.json");
    return exflate(Sandbox(animation), arguments);
}

Finished exflate(const Sandbox& sandbox, const Start& start) {
    return sandbox.run(EXFLATE_COMMAND, start);
}

Finished lone_exflate(const Sandbox& sandbox, const Start& start) {
    const fs::path command = sandbox.path("bin/exflate");
    if (fs::create_directory(command.parent_path())) fs::copy(EXFLATE_COMMAND, command);
    return sandbox.run(command, start);
}

}  // namespace test
