// How large the written document is, reckoned from what changed.
#pragma once

#include <cstddef>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "shared/store.h"
#include "write/comp_writer.h"

namespace lottie::document {

// Looks at all compositions once, later only at those that changed since.
class WrittenSize {
  public:
    // The store must outlive it. Of the project's changes it is the one reader.
    explicit WrittenSize(const Store& store);

    // Of what write_document() would write.
    std::size_t now();
    // Writes the layers of a composition, of which the size is known then.
    WrittenLayers write_layers(const host::model::Comp& comp, const CompWriter& writer, KeptTexts& kept);

  private:
    void look_at_changes();
    void look_at(const host::model::Item& item);
    void look_at(const StoredComp& stored, const CompWriter& writer, std::size_t size_of_array);
    void set_growth(const host::model::Item& item, std::ptrdiff_t growth);
    std::size_t size_of_deleted_assets() const;
    std::size_t gap_after(std::size_t asset) const;

    const Store& store_;
    const host::model::Item* being_written_ = nullptr;
    std::unordered_map<const host::model::Item*, std::size_t> assets_;
    std::unordered_map<const host::model::Item*, std::ptrdiff_t> growth_;  // of the arrays of layers
    std::ptrdiff_t whole_growth_ = 0;
    std::set<std::size_t> deleted_assets_;
    std::size_t size_of_deleted_ = 0;                         // with the gaps behind them
    std::unordered_set<const host::model::Item*> irregular_;  // changed in a way that only writing tells the size of
};

}  // namespace lottie::document
