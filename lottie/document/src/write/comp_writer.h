// The layers of one composition as an array.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "document/document.h"
#include "write/kept_texts.h"
#include "write/layer_writer.h"
#include "write/write_context.h"

namespace lottie::document {

using NewCompIds = std::unordered_map<const host::model::Item*, std::string>;

// Compositions of the host's making need an id that no asset has.
NewCompIds ids_of_new_comps(const Store& store);

// In the order of the stack. Layers that stand next to one another as in the file keep what is between them.
class CompWriter {
  public:
    // `stored` is null for a composition that the host made. All must outlive the writer.
    CompWriter(const Store& store, const StoredComp* stored, const host::model::Comp& comp, const NewCompIds& new_ids);

    bool is_untouched() const;
    bool became_3d() const;

    void write(OutputText& out) const;
    // Only the layers themselves; the array with all that stands between them is of the size given back.
    WrittenLayers write_layers(std::size_t& size_of_array, KeptTexts& kept) const;

  private:
    const host::model::Layer* above(std::size_t i) const { return i == 0 ? nullptr : stack_[i - 1]; }
    std::string separator() const;
    std::string_view gap(std::size_t place) const;
    void write_gap(OutputText& out, std::size_t place) const;

    const Store& store_;
    const StoredComp* stored_;
    const host::model::Comp& comp_;
    std::vector<host::model::Layer*> stack_;
    std::vector<const StoredLayer*> own_;  // of each that is the file's, else null
    Numbering numbers_;
    WriteContext context_;
    std::string separator_;
};

}  // namespace lottie::document
