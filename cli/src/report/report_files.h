// The files of cli/report/ inside the command.
#pragma once

#include <cstddef>

namespace cli {

struct ReportFile {
    const char* name;
    const char* contents;
    std::size_t size;
};

// Ends with a row whose name is null. Made at build.
extern const ReportFile report_files[];

}  // namespace cli
