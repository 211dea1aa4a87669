// Animations in packed files: which form a file has, and what both forms promise.
#include "packed/archive.h"

#include <stdexcept>
#include <utility>

#include "gzip_file.h"
#include "packed_file.h"
#include "zip_file.h"

namespace lottie::packed {
namespace {

// Of an entry, and of a directory without entries.
bool is_zip(std::string_view bytes) {
    return bytes.starts_with(std::string_view("PK\3\4", 4)) || bytes.starts_with(std::string_view("PK\5\6", 4));
}

bool is_gzip(std::string_view bytes) {
    return bytes.starts_with("\x1F\x8B");
}

}  // namespace

bool Archive::is_archive(std::string_view bytes) {
    return is_zip(bytes) || is_gzip(bytes);
}

Archive Archive::read(std::string bytes) {
    if (is_gzip(bytes)) return Archive(read_gzip(std::move(bytes)));
    return Archive(read_zip(std::move(bytes)));
}

Archive::Archive(std::unique_ptr<PackedFile> packed) : packed_(std::move(packed)) {}
Archive::Archive(Archive&&) noexcept = default;
Archive& Archive::operator=(Archive&&) noexcept = default;
Archive::~Archive() = default;

Form Archive::form() const {
    return packed_->form();
}

const std::vector<PackedAnimation>& Archive::animations() const {
    return packed_->animations;
}

const References& Archive::references() const {
    return packed_->references;
}

std::string Archive::write(const std::vector<std::string>& texts,
                           const std::map<std::string, std::string>& layer_names) const {
    const auto& animations = packed_->animations;
    if (texts.size() != animations.size()) throw std::invalid_argument("a text for each animation is needed");
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (texts[i] != animations[i].text) return packed_->write(texts, layer_names);
    }
    return packed_->bytes;
}

}  // namespace lottie::packed
