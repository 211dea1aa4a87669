// Names of entries that an archive must not have.
#pragma once

#include <string>

namespace lottie::packed {

// Throws ArchiveError for a name that could lead out of the folder in which somebody unpacks the archive.
void refuse_name(const std::string& name);

}  // namespace lottie::packed
