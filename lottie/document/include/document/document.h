// A Lottie animation as a project, and back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/input_error.h"
#include "document/outline.h"
#include "document/output_text.h"
#include "model/project.h"

namespace lottie::document {

// What the file says of a layer beyond what the model holds.
struct LayerFacts {
    std::optional<std::int64_t> ind;  // the number that other layers know it by
    int type = 0;                     // the file's `ty`: 0 composition, 1 solid, 2 image, 3 null, 4 shape, 5 text, ...
};

// The layers of a composition as they will stand in a file, top to bottom.
struct WrittenLayers {
    std::vector<std::string_view> layers;  // pieces of the document's text where nothing changed, else of `own`
    std::vector<std::shared_ptr<const std::string>> own;
    std::size_t new_bytes = 0;  // that had to be written, as they did not stand in `own` the last time
};

// Keeps the text it was read from: what the project did not change is written with the very same bytes.
class Document {
  public:
    // Throws InputError when the text is not an animation or one that cannot be worked with. Faults deep inside a layer
    // are found when the layer's content is first asked for: host::model::Error, with a JSON pointer in its sentence.
    // An animation in which no layer shows a composition is never refused for what is odd in it: its project is empty
    // then.
    static Document read(std::string text, const host::model::HostRules& rules = {});
    // The same with the text's outline, for who has read it already.
    static Document read(std::string text, DocumentOutline outline);
    Document(Document&&) noexcept;
    Document& operator=(Document&&) noexcept;
    ~Document();

    // The text that was read. It and the project live as long as the document.
    const std::string& text() const;
    host::model::Project& project() const;
    host::model::Comp& main_comp() const;

    // Whether this is such an animation; it is written as it was read.
    bool is_passed_on() const;
    // What in the text was passed over, as players do.
    const std::vector<InputError>& warnings() const;

    // The first fault found inside a layer so far, null if none: whoever got a host::model::Error for it may have
    // passed over it.
    const InputError* content_fault() const;

    // The project as an animation. With nothing changed, or everything undone, the text that was read. Throws
    // InputError when what a layer has become cannot be written.
    std::string write() const;
    // The same, pointing into the document.
    OutputText write_in_pieces() const;
    // One composition of it. Of the one that was written last only what changed is written anew.
    WrittenLayers write_layers(const host::model::Comp& comp) const;
    // How large it is in all. What did not change since the last call is not looked at again.
    std::size_t written_size() const;

    // Null for layers that are not in the file: made by the host, or copied there.
    std::optional<LayerFacts> facts(const host::model::Layer& layer) const;
    // The asset id of a nested composition; empty for the main one and for those that the host made.
    std::string comp_id(const host::model::Comp& comp) const;
    // JSON pointer of the object in the text that was read (for the main composition: the whole document, ""); null for
    // what is not in the file.
    std::optional<std::string> pointer(const host::model::Comp& comp) const;
    std::optional<std::string> pointer(const host::model::Layer& layer) const;

  private:
    explicit Document(std::unique_ptr<struct Store> store);
    std::unique_ptr<struct Store> store_;
    std::unique_ptr<class KeptTexts> kept_texts_;
    mutable std::unique_ptr<class WrittenSize> written_size_;  // null until asked for
};

}  // namespace lottie::document
