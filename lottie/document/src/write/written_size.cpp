// How large the written document is, reckoned from what changed.
#include "write/written_size.h"

#include "write/comp_writer.h"
#include "write/document_writer.h"

namespace lottie::document {

WrittenSize::WrittenSize(const Store& store) : store_(store) {
    for (std::size_t i = 0; i < store.assets.size(); ++i) assets_.emplace(store.assets[i].item, i);
    store.project->take_changed_items();
    for (const auto& stored : store.comps) look_at(*stored->comp);
    for (const StoredAsset& asset : store.assets) look_at(*asset.item);
    for (const host::model::Comp* comp : store.project->comps()) look_at(*comp);
}

void WrittenSize::look_at_changes() {
    for (const host::model::Item* item : store_.project->take_changed_items()) look_at(*item);
}

std::size_t WrittenSize::now() {
    look_at_changes();
    if (!irregular_.empty()) return write_document(store_).size();
    return static_cast<std::size_t>(static_cast<std::ptrdiff_t>(store_.text.size()) + whole_growth_) -
           size_of_deleted_assets();
}

WrittenLayers WrittenSize::write_layers(const host::model::Comp& comp, const CompWriter& writer, KeptTexts& kept) {
    std::size_t size = 0;
    WrittenLayers written = writer.write_layers(size, kept);
    being_written_ = &comp;
    look_at_changes();
    being_written_ = nullptr;
    if (const StoredComp* stored = store_.stored(comp)) look_at(*stored, writer, size);
    return written;
}

void WrittenSize::look_at(const host::model::Item& item) {
    if (&item == being_written_) return;
    irregular_.erase(&item);
    if (const auto asset = assets_.find(&item); asset != assets_.end()) {
        const std::size_t size = store_.assets[asset->second].text.of(store_.text).size() + gap_after(asset->second);
        if (item.is_alive() && deleted_assets_.erase(asset->second) > 0) size_of_deleted_ -= size;
        if (!item.is_alive() && deleted_assets_.insert(asset->second).second) size_of_deleted_ += size;
    }
    if (item.type() != host::model::ItemType::comp) return;
    const auto& comp = static_cast<const host::model::Comp&>(item);
    const StoredComp* stored = store_.stored(comp);
    if (stored == nullptr) {
        if (item.is_alive()) irregular_.insert(&item);
    } else if (!comp.is_alive() && stored->asset >= 0) {
        set_growth(item, 0);  // its asset is gone
    } else {
        const NewCompIds none;
        const CompWriter writer(store_, stored, comp, none);
        std::size_t size = 0;
        if (writer.is_untouched()) {
            size = stored->array.of(store_.text).size();
        } else {
            KeptTexts none_kept;
            writer.write_layers(size, none_kept);
        }
        look_at(*stored, writer, size);
    }
}

void WrittenSize::look_at(const StoredComp& stored, const CompWriter& writer, std::size_t size_of_array) {
    if (stored.comp->name() != stored.loaded_name || writer.became_3d()) irregular_.insert(stored.comp);
    set_growth(*stored.comp, static_cast<std::ptrdiff_t>(size_of_array) -
                                 static_cast<std::ptrdiff_t>(stored.array.of(store_.text).size()));
}

void WrittenSize::set_growth(const host::model::Item& item, std::ptrdiff_t growth) {
    std::ptrdiff_t& known = growth_[&item];
    whole_growth_ += growth - known;
    known = growth;
}

std::size_t WrittenSize::gap_after(std::size_t asset) const {
    if (asset + 1 >= store_.assets.size()) return 0;
    return store_.assets[asset + 1].text.begin - store_.assets[asset].text.end;
}

// Between two assets that stay remains what was behind the first; all gone, nothing remains between the brackets.
std::size_t WrittenSize::size_of_deleted_assets() const {
    if (deleted_assets_.empty()) return 0;
    if (deleted_assets_.size() == store_.assets.size()) {
        return store_.outline.assets_token.text.of(store_.text).size() - 2;
    }
    std::size_t last = store_.assets.size() - 1;
    while (deleted_assets_.contains(last)) --last;
    return size_of_deleted_ + gap_after(last);
}

}  // namespace lottie::document
