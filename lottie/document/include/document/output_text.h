// A document as it will stand in a file, in pieces: long stretches that did not change are only pointed at.
#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <vector>

namespace lottie::document {

class OutputText {
  public:
    OutputText() = default;
    OutputText(OutputText&&) = default;
    OutputText& operator=(OutputText&&) = default;

    void append(std::string_view text);
    // The same for text that outlives this object.
    void refer(std::string_view lasting);

    std::size_t size() const { return size_; }
    // In order; they live as long as this object and what refer() was given.
    const std::vector<std::string_view>& pieces() const { return pieces_; }
    std::string text() const;

  private:
    std::list<std::string> own_;
    std::vector<std::string_view> pieces_;
    bool last_is_own_ = false;  // and is the end of own_.back()
    std::size_t size_ = 0;
};

}  // namespace lottie::document
