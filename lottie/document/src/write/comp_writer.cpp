// The layers of one composition as an array.
#include "write/comp_writer.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>

#include "document/json_text.h"
#include "document/sequence_edit.h"

namespace lottie::document {
namespace {

using host::model::Layer;

constexpr int kFirstVersionWithoutEnds = 5;

bool is_old(const Store& store) {
    if (store.outline.version.kind != JsonKind::string) return false;
    const std::string version = decode_string(store.outline.version.text.of(store.text));
    int major = kFirstVersionWithoutEnds;
    std::from_chars(version.data(), version.data() + version.size(), major);
    return major < kFirstVersionWithoutEnds;
}

// Only keyframes have a member "e" that is an array.
bool has_end_values(const std::string& text) {
    constexpr std::string_view kKey = "\"e\"";
    for (std::size_t at = text.find(kKey); at != std::string::npos; at = text.find(kKey, at + 1)) {
        std::size_t next = text.find_first_not_of(" \n\r\t", at + kKey.size());
        if (next == std::string::npos || text[next] != ':') continue;
        next = text.find_first_not_of(" \n\r\t", next + 1);
        if (next != std::string::npos && text[next] == '[') return true;
    }
    return false;
}

bool writes_end_values(const Store& store) {
    if (!store.writes_end_values) store.writes_end_values = is_old(store) && has_end_values(store.text);
    return *store.writes_end_values;
}

}  // namespace

NewCompIds ids_of_new_comps(const Store& store) {
    NewCompIds ids;
    std::unordered_set<std::string> taken;
    int number = 0;
    for (const host::model::Comp* comp : store.project->comps()) {
        if (store.stored(*comp) != nullptr) continue;
        if (taken.empty()) {
            for (const StoredAsset& asset : store.assets) taken.insert(asset.id);
        }
        std::string id;
        do {
            id = "comp_" + std::to_string(number++);
        } while (!taken.insert(id).second);
        ids.emplace(comp, std::move(id));
    }
    return ids;
}

CompWriter::CompWriter(const Store& store, const StoredComp* stored, const host::model::Comp& comp,
                       const NewCompIds& new_ids)
    : store_(store),
      stored_(stored),
      comp_(comp),
      stack_(comp.is_alive() ? comp.stack().to_vector() : std::vector<Layer*>()),
      numbers_(stored, stack_),
      context_{store, numbers_, new_ids, writes_end_values(store)},
      separator_(separator()) {
    own_.reserve(stack_.size());
    for (const Layer* layer : stack_) own_.push_back(is_from_file(*layer) ? base_of(*layer) : nullptr);
}

bool CompWriter::is_untouched() const {
    if (stored_ == nullptr || stack_.size() != stored_->layers.size()) return false;
    for (std::size_t i = 0; i < stack_.size(); ++i) {
        if (stack_[i] != stored_->layers[i].layer || !document::is_untouched(numbers_, *stack_[i], above(i)))
            return false;
    }
    return true;
}

bool CompWriter::became_3d() const {
    return std::any_of(stack_.begin(), stack_.end(), [](const Layer* layer) {
        const StoredLayer* base = base_of(*layer);
        return layer->is_3d() && (base == nullptr || !base->is_3d());
    });
}

void CompWriter::write(OutputText& out) const {
    out.append("[");
    for (std::size_t i = 0; i < stack_.size(); ++i) {
        write_gap(out, i);
        write_layer(out, context_, *stack_[i], above(i));
    }
    write_gap(out, stack_.size());
    out.append("]");
}

// What stands before the layer at that place, or behind the last.
std::string_view CompWriter::gap(std::size_t place) const {
    const bool had_layers = stored_ != nullptr && !stored_->layers.empty();
    const std::string_view text = store_.text;
    if (stack_.empty()) return {};
    if (place == 0) {
        return had_layers ? Slice{stored_->array.begin + 1, stored_->layers.front().text.begin}.of(text) : "";
    }
    if (place == stack_.size()) {
        return had_layers ? Slice{stored_->layers.back().text.end, stored_->array.end - 1}.of(text) : "";
    }
    const StoredLayer* before = own_[place - 1];
    const StoredLayer* own = own_[place];
    if (before == nullptr || own == nullptr || own->position != before->position + 1) return separator_;
    return Slice{before->text.end, own->text.begin}.of(text);
}

void CompWriter::write_gap(OutputText& out, std::size_t place) const {
    const std::string_view between = gap(place);
    if (between.data() == separator_.data()) {
        out.append(between);
    } else {
        out.refer(between);  // a piece of the document
    }
}

WrittenLayers CompWriter::write_layers(std::size_t& size_of_array, KeptTexts& kept) const {
    kept.set_stack(comp_, stack_);
    WrittenLayers written;
    written.layers.reserve(stack_.size());
    size_of_array = 2;  // the brackets
    for (std::size_t i = 0; i < stack_.size(); ++i) {
        Layer& layer = *stack_[i];
        if (document::is_untouched(numbers_, layer, above(i))) {
            written.layers.push_back(own_[i]->text.of(store_.text));
        } else {
            KeptTexts::Text text = kept.find(i, numbers_, above(i));
            if (text == nullptr) {
                OutputText one;
                write_layer(one, context_, layer, above(i));
                text = std::make_shared<const std::string>(one.text());
                written.new_bytes += text->size();
                kept.keep(i, numbers_, above(i), text);
            }
            written.layers.push_back(*written.own.emplace_back(std::move(text)));
        }
        size_of_array += gap(i).size() + written.layers.back().size();
    }
    size_of_array += gap(stack_.size()).size();
    return written;
}

std::string CompWriter::separator() const {
    if (stored_ == nullptr) return ",";
    std::vector<Slice> units;
    for (std::size_t i = 0; i < std::min<std::size_t>(stored_->layers.size(), 2); ++i)
        units.push_back(stored_->layers[i].text);
    return SequenceEdit(store_.text, stored_->array, std::move(units)).separator();
}

}  // namespace lottie::document
