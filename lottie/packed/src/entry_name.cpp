// Names of entries that an archive must not have.
#include "entry_name.h"

#include <string_view>

#include "packed/archive_error.h"

namespace lottie::packed {
namespace {

bool has_parent_step(std::string_view name) {
    for (;;) {
        const std::size_t slash = name.find('/');
        if (name.substr(0, slash) == "..") return true;
        if (slash == std::string_view::npos) return false;
        name.remove_prefix(slash + 1);
    }
}

bool has_drive(std::string_view name) {
    return name.size() > 1 && name[1] == ':';
}

}  // namespace

void refuse_name(const std::string& name) {
    const char* fault = nullptr;
    if (name.empty())
        fault = "holds an entry without a name";
    else if (name.front() == '/' || has_drive(name))
        fault = "is the name of an entry, and an absolute path";
    else if (name.find('\\') != std::string::npos)
        fault = "is the name of an entry, and has a backslash";
    else if (has_parent_step(name))
        fault = "is the name of an entry, and leads out of the archive";
    if (fault == nullptr) return;
    throw ArchiveError(std::string(fault) + ": get the archive from somebody you trust, or pack it again", name);
}

}  // namespace lottie::packed
