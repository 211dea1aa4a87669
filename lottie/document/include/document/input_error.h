// Why a text is refused as an animation.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace lottie::document {

// what() is one sentence without the file's name: what is wrong, where, and what would be right.
class InputError : public std::runtime_error {
  public:
    InputError(const std::string& sentence, std::size_t line, std::size_t column, std::string pointer)
        : std::runtime_error(sentence), line_(line), column_(column), pointer_(std::move(pointer)) {}

    // Both count from 1, columns in characters; 0 if the fault is in no one place.
    std::size_t line() const { return line_; }
    std::size_t column() const { return column_; }
    // JSON pointer of the value at fault; empty for the whole document.
    const std::string& pointer() const { return pointer_; }

  private:
    std::size_t line_;
    std::size_t column_;
    std::string pointer_;
};

}  // namespace lottie::document
