// Totals of the work on several files.
#pragma once

#include <cstddef>
#include <string>

namespace cli {

struct FileTotals {
    std::size_t files = 0;
    std::size_t failed = 0;  // of those, because of an error
    std::size_t nests = 0;   // that were examined
    std::size_t unnested = 0;
    std::size_t kept = 0;    // as nests
    std::size_t mended = 0;  // of those that were un-nested
    std::size_t left = 0;    // visible nests at the end
    std::size_t bytes_before = 0;
    std::size_t bytes_after = 0;

    // Verdicts on nests.
    std::size_t exact = 0;
    std::size_t equal_to_the_eye = 0;
    std::size_t changing = 0;
    std::size_t failing = 0;  // whose change, or staying a nest, is neither known nor allowed

    FileTotals& operator+=(const FileTotals& more);
};

// "1000 bytes became 1100 (+10.0 %)".
std::string growth(std::size_t before, std::size_t after);

}  // namespace cli
