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

// A file's name in sentences; "standard input" for "-".
std::string shown_name(const std::string& file);

// The file's bytes. Throws Failure (bad input).
std::string read_input(const std::string& file);

// Throws Failure (bad input, with its place).
lottie::document::Document parse_input(std::string text);

// `label` names the animation that they are about.
void print_warnings(const Console& console, const std::string& label,
                    const std::vector<lottie::document::InputError>& warnings);

// Throws Failure (bad input, with its place) if a fault inside some layer was met: a run may have passed over it.
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
// process that is killed leaves a file named .exflate- and six characters behind at most. A file that is read-only is
// refused unless `force` is set; of other hard links to it `console` says that they keep what they have. Throws Failure
// (failed).
void write_result(const Console& console, const std::string& output, host::base::Pieces bytes, bool force);

// Larger .tgs files are not accepted as stickers.
constexpr std::size_t kMaxStickerBytes = std::size_t{64} << 10;

class AnimationFile {
  public:
    // Reads the file; "-" is standard input. `id` chooses one animation of a .lottie file, an empty one means all.
    // Throws Failure: bad input, its place naming the entry at fault; usage if there is no animation of that id.
    AnimationFile(const std::string& file, const std::string& id);

    // Whether it is a .lottie file, even one with a single animation: its animations have names.
    bool is_collection() const { return form() == lottie::packed::Form::lottie; }
    std::optional<lottie::packed::Form> form() const;  // none of a plain file
    std::size_t byte_count() const { return byte_count_; }

    // The chosen animations; at least one.
    std::size_t count() const { return chosen_.size(); }
    const std::string& text(std::size_t i) const;
    // The same, once: a plain file may have no text afterwards.
    std::string take_text(std::size_t i);
    std::string id(std::size_t i) const;     // empty where there is no choice
    std::string place(std::size_t i) const;  // a colon and the entry for sentences; empty where there is no choice
    // The file's name as it is in sentences, and the place.
    std::string label(std::size_t i) const { return name_ + place(i); }

    // What other things in the file ask of the animations.
    const lottie::packed::AskedFor& asked_for() const;
    // The layers among it that animations have which are not chosen.
    NamesNow names_in_others() const;

    // The file's bytes with `texts` in the place of the chosen animations, in the same form. They point at what the
    // texts of a plain file point at. What asks for a layer asks by its new name. Throws Failure (failed).
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
