// The manifest of a .lottie archive: which animations are in it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lottie::packed {

inline constexpr std::string_view kManifest = "manifest.json";

struct Manifest {
    std::vector<std::string> ids;           // of the animations, each once and at least one
    std::vector<std::string_view> folders;  // where animations lie, those of the manifest's own version first
};

// Throws ArchiveError.
Manifest read_manifest(const std::string& text);

}  // namespace lottie::packed
