// Whole files, "-" being a standard stream.
#include "cli/shared/file_io.h"

#include "base/files.h"

namespace cli {

std::string read_whole(const std::string& file) {
    if (file == kStandardStream) return host::base::read_standard_input(kMaxInputBytes);
    return host::base::read_file(file, kMaxInputBytes);
}

}  // namespace cli
