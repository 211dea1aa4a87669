// What every harness has: the function that is called with one input, and a way to say that something is wrong.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

// May be called any number of times in one process, in any order of inputs.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline std::string_view text_of(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// Ends the process, as a crash that the fuzzer keeps, unless the condition holds.
inline void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "not as required: %s\n", what);
    std::abort();
}

}  // namespace fuzz
