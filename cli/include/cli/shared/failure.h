// Exit codes, and what ends the work on one file.
#pragma once

#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "cli/shared/console.h"

namespace cli {

// 1: a look changes (check), the plug-in did something else (replay).
enum class ExitCode { done = 0, look_changes = 1, differs = 1, usage = 2, bad_input = 3, failed = 4 };

// Ends the work on one file; what() is one sentence without the file's name.
class Failure : public std::runtime_error {
  public:
    Failure(ExitCode code, const std::string& sentence, std::string place = "")
        : std::runtime_error(sentence), code_(code), place_(std::move(place)) {}

    ExitCode code() const { return code_; }
    const std::string& place() const { return place_; }  // ":ENTRY" and ":LINE:COLUMN" in the file, or nothing

  private:
    ExitCode code_;
    std::string place_;
};

// What else may end it, as a failure.
inline Failure unforeseen(const std::exception& problem) {
    const bool is_memory = dynamic_cast<const std::bad_alloc*>(&problem) != nullptr ||
                           dynamic_cast<const std::length_error*>(&problem) != nullptr;
    return {ExitCode::failed, is_memory ? "there is not enough memory for it" : problem.what()};
}

inline void print_failure(const Console& console, const std::string& file, const Failure& failure) {
    console.say(Console::Tone::error, file + failure.place(), failure.what());
}

// Does the work on one file. What ends it early is printed, and its exit code comes back.
template <class Work>
ExitCode guarded(const Console& console, const std::string& file, Work work) {
    try {
        return work();
    } catch (const Failure& failure) {
        print_failure(console, file, failure);
        return failure.code();
    } catch (const std::exception& problem) {
        print_failure(console, file, unforeseen(problem));
        return ExitCode::failed;
    }
}

}  // namespace cli
