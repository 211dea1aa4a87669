// A piece of the document's text, by positions.
#pragma once

#include <cstdint>
#include <string_view>

namespace lottie::document {

struct Slice {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;

    bool empty() const { return begin == end; }
    bool contains(Slice inner) const { return begin <= inner.begin && inner.end <= end; }
    std::string_view of(std::string_view text) const { return text.substr(begin, end - begin); }
    friend bool operator==(Slice, Slice) = default;
};

// Longest text that slices can address.
inline constexpr std::size_t kMaxTextSize = 0xFFFFFFF0u;

}  // namespace lottie::document
