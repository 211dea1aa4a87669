// Whole files in and out, "-" being a standard stream.
#include "cli/shared/file_io.h"

namespace cli {

std::string read_whole(const std::string& file) {
    if (file == kStandardStream) return host::base::read_standard_input(kMaxInputBytes);
    return host::base::read_file(file, kMaxInputBytes);
}

void write_whole(std::string_view file, host::base::Pieces bytes) {
    if (file == kStandardStream) {
        host::base::write_standard_output(bytes);
    } else {
        host::base::replace_file(file, bytes, {.temporary_prefix = ".exflate-"});
    }
}

}  // namespace cli
