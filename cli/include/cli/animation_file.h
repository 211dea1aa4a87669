// The animations of a file, whether it is plain or packed.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "document/written.h"
#include "packed/archive.h"

namespace cli {

// What a .tgs file may have at the most to be taken as a sticker.
constexpr std::size_t kMostStickerBytes = std::size_t{64} << 10;

class AnimationFile {
  public:
    // Reads the file; "-" is standard input. `id` chooses one animation of a .lottie file, an empty one means all.
    // Throws Failure: bad input, its place naming the entry at fault; usage if there is no animation of that id.
    AnimationFile(const std::string& file, const std::string& id);

    // Of a .lottie file, even with one animation in it: its animations have names.
    bool is_collection() const { return form() == lottie::packed::Form::lottie; }
    std::optional<lottie::packed::Form> form() const;  // none of a plain file
    std::size_t byte_count() const { return byte_count_; }

    // The chosen animations; at least one.
    std::size_t count() const { return chosen_.size(); }
    const std::string& text(std::size_t i) const;
    // The same for who asks once: of a plain file there may be no text afterwards.
    std::string take_text(std::size_t i);
    std::string id(std::size_t i) const;     // empty where there is no choice
    std::string place(std::size_t i) const;  // a colon and the entry for sentences; empty where there is no choice
    // The file's name as it is in sentences, and the place.
    std::string label(std::size_t i) const { return name_ + place(i); }

    // The file's bytes with `texts` in the place of the chosen animations, in the same form. They point at what the
    // texts of a plain file point at. Throws Failure (failed).
    lottie::document::Written with(std::vector<lottie::document::Written> texts) const;

  private:
    void choose(const std::string& id);
    const lottie::packed::PackedAnimation& packed(std::size_t i) const { return archive_->animations()[chosen_[i]]; }

    std::string name_;
    std::size_t byte_count_;
    std::string plain_;
    std::optional<lottie::packed::Archive> archive_;
    std::vector<std::size_t> chosen_;
};

}  // namespace cli
