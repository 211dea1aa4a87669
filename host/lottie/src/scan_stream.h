// The text as the JSON reader reads it.
#pragma once

#include <cstddef>

namespace host::lottie {

// A stream over zero-terminated text. It is handed on by reference, so Tell() is right inside the reader's events.
class ScanStream {
  public:
    using Ch = char;
    ScanStream(const char* begin, const char* start) : begin_(begin), at_(start) {}

    Ch Peek() const { return *at_; }
    Ch Take() { return *at_++; }
    std::size_t Tell() const { return static_cast<std::size_t>(at_ - begin_); }

    // Writing is part of the reader's stream concept but only used when it decodes in place.
    Ch* PutBegin() { return nullptr; }
    void Put(Ch) {}
    void Flush() {}
    std::size_t PutEnd(Ch*) { return 0; }

  private:
    const char* begin_;
    const char* at_;
};

}  // namespace host::lottie
