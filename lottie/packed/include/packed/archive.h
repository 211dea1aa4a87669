// Animations in packed files: .lottie (a zip archive with a manifest) and .tgs (gzip).
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "packed/archive_error.h"

namespace lottie::packed {

enum class Form { lottie, tgs };

// How much an archive may unpack to; what is beyond is refused while it is being unpacked, whatever its headers say.
inline constexpr std::size_t kMaxBytes = std::size_t{256} << 20;        // all animations together
inline constexpr std::size_t kMaxManifestBytes = std::size_t{1} << 20;  // a state machine and a theme too
inline constexpr std::size_t kMaxEntries = 10'000;
inline constexpr std::size_t kMaxRatio = 200;                    // bytes for each packed one, ...
inline constexpr std::size_t kFreeBytes = std::size_t{1} << 20;  // ... except for the first million

struct PackedAnimation {
    std::string id;     // in the manifest; empty in a .tgs file
    std::string entry;  // the archive's name for it; empty in a .tgs file
    std::string text;
};

// What else in the archive names parts of its animations.
struct References {
    std::set<std::string> layers;  // by state machines
    std::set<std::string> slots;   // by themes
};

// Keeps the bytes it was read from. Nothing but the manifest, the animations, state machines and themes is ever
// unpacked, and nothing is written to any disk.
class Archive {
  public:
    // By the first bytes: a file's name proves nothing.
    static bool is_archive(std::string_view bytes);

    // `bytes` must be those of an archive as is_archive() says. Throws ArchiveError.
    static Archive read(std::string bytes);

    Archive(Archive&&) noexcept;
    Archive& operator=(Archive&&) noexcept;
    ~Archive();

    Form form() const;
    // At least one; in the order of the manifest.
    const std::vector<PackedAnimation>& animations() const;

    const References& references() const;

    // The archive with `texts` in the place of the animations' own, one for each. With equal texts the very bytes that
    // were read; else every entry that stays keeps its packed bytes, name, place, time and comment, and the new ones
    // keep all but the first. In state machines layers get the new names of `layer_names`, by their old ones. Equal
    // archives and texts give equal bytes. Throws ArchiveError.
    std::string write(const std::vector<std::string>& texts,
                      const std::map<std::string, std::string>& layer_names = {}) const;

  private:
    explicit Archive(std::unique_ptr<struct PackedFile> packed);
    std::unique_ptr<struct PackedFile> packed_;
};

}  // namespace lottie::packed
