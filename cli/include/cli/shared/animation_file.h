// Animations from files, plain or packed, and back; every error is a Failure.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/files.h"
#include "cli/shared/console.h"
#include "cli/shared/file_io.h"
#include "cli/shared/interactions.h"
#include "document/document.h"
#include "document/output_text.h"
#include "packed/archive.h"

namespace cli {

// A file's name for messages; "standard input" for "-".
std::string shown_name(const std::string& file);

// The file's bytes. Throws Failure (bad input).
std::string read_input(const std::string& file);

// Throws Failure (bad input, with its place).
lottie::document::Document parse_input(std::string text);
lottie::document::Document parse_input(std::string text, lottie::document::DocumentOutline outline);

// `label` names the animation that the warnings are about.
void print_warnings(const Console& console, const std::string& label,
                    const std::vector<lottie::document::InputError>& warnings);

// Throws Failure (bad input, with its place) if a fault inside a layer came up: a run may have ignored it.
void refuse_faulty_content(const lottie::document::Document& document);

// The animation as it is now. Throws Failure (bad input, with its place) if it cannot be written.
lottie::document::OutputText write_animation(const lottie::document::Document& document);
// The same for the layers of one composition.
lottie::document::WrittenLayers write_layers(const lottie::document::Document& document, const host::model::Comp& comp);

// The folder for results, made if it is missing. Throws Failure (failed).
void prepare_folder(const std::string& folder);

// Writes to standard output. Throws Failure (failed).
void write_result(host::base::Pieces bytes);

// Writes the whole result to the file or nothing, as host::base::replace_file() does it; "-" is standard output. A
// process that is killed leaves at most a file named .exflate- and six characters behind. A file that is read-only is
// refused unless `force` is set; `console` warns of other hard links, which keep the old content. Throws Failure
// (failed).
void write_result(const Console& console, const std::string& output, host::base::Pieces bytes, bool force);

// Larger .tgs files are not accepted as stickers.
constexpr std::size_t kMaxStickerBytes = std::size_t{64} << 10;

class AnimationFile {
  public:
    // Reads the file; "-" is standard input. `id` chooses one animation of a .lottie file, an empty one means all.
    // Throws Failure: bad input, naming the entry at fault; usage if there is no animation with that id.
    AnimationFile(const std::string& file, const std::string& id);

    // Whether it is a .lottie file, even one with a single animation: its animations have names.
    bool is_collection() const { return form() == lottie::packed::Form::lottie; }
    std::optional<lottie::packed::Form> form() const;  // none for a plain file
    std::size_t byte_count() const { return byte_count_; }

    // The chosen animations; at least one.
    std::size_t count() const { return chosen_.size(); }
    const std::string& text(std::size_t i) const;
    // Moves it out; to be called once, as a plain file may have no text afterwards.
    std::string take_text(std::size_t i);
    std::string id(std::size_t i) const;     // empty where there is only one
    std::string place(std::size_t i) const;  // a colon and the entry, for messages; empty where there is only one
    // The file's name for messages, and the place.
    std::string label(std::size_t i) const { return name_ + place(i); }

    // What the rest of the file refers to in the animations.
    const lottie::packed::References& references() const;
    // The layers among it that are in animations that were not chosen.
    CurrentNames names_in_others() const;

    // The file's bytes with `texts` in the place of the chosen animations, in the same form. They borrow from
    // the same text as those of a plain file. References to layers get the new names. Throws Failure (failed).
    lottie::document::OutputText with(std::vector<lottie::document::OutputText> texts,
                                      const std::map<std::string, std::string>& layer_names = {}) const;

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
