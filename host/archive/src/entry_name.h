// Names of entries that an archive must not have.
#pragma once

#include <string>

namespace host::archive {

// Throws ArchiveError for a name that could lead out of the folder in which somebody unpacks the archive.
void refuse_name(const std::string& name);

}  // namespace host::archive
