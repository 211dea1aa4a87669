// Exit codes, and what ends the work on one file.
#pragma once

#include <cstddef>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "cli/shared/console.h"

namespace cli {

// 1: a look changes (check), the plug-in did something else (replay).
enum class ExitCode { done = 0, look_changes = 1, differs = 1, usage = 2, bad_input = 3, failed = 4 };

// In a text, from 1; 0 if unknown.
struct TextPlace {
    std::size_t line = 0;
    std::size_t column = 0;
};

// Ends the work on one file; what() is one sentence without the file's name.
class Failure : public std::runtime_error {
  public:
    // `part` is the part of the file at fault: a colon and its name.
    Failure(ExitCode code, const std::string& sentence, std::string part = "", TextPlace at = {})
        : std::runtime_error(sentence), code_(code), part_(std::move(part)), at_(at) {}

    ExitCode code() const { return code_; }
    TextPlace at() const { return at_; }
    std::string place() const {  // what follows the file's name: the part and ":LINE:COLUMN", as far as known
        if (at_.line == 0) return part_;
        return part_ + ':' + std::to_string(at_.line) + ':' + std::to_string(at_.column);
    }

    // The file at fault where it is another than the one worked on; empty otherwise.
    const std::string& file() const { return file_; }

    // The same failure, in a part of the file.
    Failure in(const std::string& part) const {
        Failure failure(code_, what(), part + part_, at_);
        failure.file_ = file_;
        return failure;
    }
    // The same failure, of that file.
    Failure of(const std::string& file) const {
        Failure failure = *this;
        failure.file_ = file;
        return failure;
    }

  private:
    ExitCode code_;
    std::string part_;
    TextPlace at_;
    std::string file_;
};

// Any other exception as a failure.
inline Failure unforeseen(const std::exception& problem) {
    const bool is_memory = dynamic_cast<const std::bad_alloc*>(&problem) != nullptr ||
                           dynamic_cast<const std::length_error*>(&problem) != nullptr;
    return {ExitCode::failed, is_memory ? "there is not enough memory for it" : problem.what()};
}

inline void print_failure(const Console& console, const std::string& file, const Failure& failure) {
    const std::string& at_fault = failure.file().empty() ? file : failure.file();
    console.say(Console::Tone::error, at_fault + failure.place(), failure.what());
}

// Does the work on one file. An error that ends it is printed; returns the exit code.
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
