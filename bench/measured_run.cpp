// Runs a command and tells what it took: seconds on the clock, seconds of the processor, kilobytes of memory at the
// most. A program of its own because a process counts the memory of the one that started it.
//   measured_run REPORT COMMAND...
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: measured_run REPORT COMMAND...\n", stderr);
        return 2;
    }
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        execvp(argv[2], argv + 2);
        _exit(127);
    }
    int status = 0;
    rusage used{};
    if (child < 0 || wait4(child, &status, 0, &used) != child) return 1;
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;

    std::FILE* report = std::fopen(argv[1], "w");
    if (report == nullptr) return 1;
    std::fprintf(report, "%.6f %.6f %ld\n", taken.count(), seconds(used.ru_utime) + seconds(used.ru_stime),
                 used.ru_maxrss);
    if (std::fclose(report) != 0) return 1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
