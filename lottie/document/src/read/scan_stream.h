// The text as the JSON reader reads it.
#pragma once

#include <rapidjson/reader.h>

#include <cstddef>
#include <string_view>

#include "document/slice.h"

namespace lottie::document {

// A stream over zero-terminated text. It is handed on by reference, so Tell() is right inside the reader's events. The
// reader believes to decode strings in place; nothing is written, and its events get each string as it is spelled,
// escapes and all.
class ScanStream {
  public:
    using Ch = char;
    ScanStream(const char* begin, const char* start) : begin_(begin), at_(start) {}

    Ch Peek() const { return *at_; }
    // Stays at the end however often it is called: checking a character of several bytes takes them without looking.
    Ch Take() {
        const Ch taken = *at_;
        at_ += taken != '\0' ? 1 : 0;
        return taken;
    }
    std::size_t Tell() const { return static_cast<std::size_t>(at_ - begin_); }
    void go_to(const char* at) { at_ = at; }

    Ch* PutBegin() { return const_cast<Ch*>(at_); }  // only compared and handed to the events
    void Put(Ch) {}
    void Flush() {}
    std::size_t PutEnd(Ch* begin) { return static_cast<std::size_t>(at_ - begin); }  // the closing quote counts

  private:
    const char* begin_;
    const char* at_;
};

inline constexpr unsigned kScanFlags = rapidjson::kParseInsituFlag;

// The place of the number, true, false or null that ends at `end`.
inline Slice plain_scalar_before(std::string_view text, std::size_t end) {
    const auto belongs = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || c == '-' || c == '+' || c == '.' || c == 'E';
    };
    std::size_t begin = end;
    while (begin > 0 && belongs(text[begin - 1])) --begin;
    return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
}

}  // namespace lottie::document
