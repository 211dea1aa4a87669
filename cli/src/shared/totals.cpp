// Totals of the work on several files.
#include "cli/shared/totals.h"

#include <cstdio>

namespace cli {

FileTotals& FileTotals::operator+=(const FileTotals& more) {
    files += more.files;
    failed += more.failed;
    nests += more.nests;
    unnested += more.unnested;
    kept += more.kept;
    mended += more.mended;
    left += more.left;
    bytes_before += more.bytes_before;
    bytes_after += more.bytes_after;
    exact += more.exact;
    equal_to_the_eye += more.equal_to_the_eye;
    changing += more.changing;
    failing += more.failing;
    return *this;
}

std::string growth(std::size_t before, std::size_t after) {
    const double percent =
        before > 0 ? 100 * (static_cast<double>(after) - static_cast<double>(before)) / static_cast<double>(before) : 0;
    char text[96];
    std::snprintf(text, sizeof text, "%zu bytes became %zu (%+.1f %%)", before, after, percent);
    return text;
}

}  // namespace cli
