// The texts that the layers of a composition were written as, for the next time that it is written.
#include "write/kept_texts.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "write/matte_members.h"

namespace lottie::document {
namespace {

using host::model::Layer;

bool has_layer_parameters(const Layer& layer) {
    const StoredLayer* base = base_of(layer);
    if (base != nullptr && base->contains_layer_parameters) return true;
    for (const auto& effect : layer.loaded_effects()) {
        for (std::size_t i = 0; i < effect->parameter_count(); ++i) {
            if (effect->parameter(i).type() == host::model::StreamType::layer_id) return true;
        }
    }
    return false;
}

// Whether its text says nothing of other objects but what circumstances tell.
bool can_be_kept(const Layer& layer) {
    const bool is_named_by_itself = !layer.own_name().empty();
    const bool tells_of_source = base_of(layer) == nullptr && !layer.has_flag(host::model::kIsNull);
    return is_named_by_itself && !tells_of_source && !has_layer_parameters(layer);
}

std::optional<std::int64_t> number_of(const Numbering& numbers, const Layer* layer) {
    return layer == nullptr ? std::nullopt : numbers.number(*layer);
}

// Where one text says `number`, if the other says `other_number` there and is otherwise the same.
std::optional<std::size_t> place_of_number(const std::string& text, const std::string& number, const std::string& other,
                                           const std::string& other_number) {
    const auto differs = std::mismatch(text.begin(), text.end(), other.begin(), other.end()).first;
    auto at = static_cast<std::size_t>(differs - text.begin());
    while (at > 0 && (std::isdigit(static_cast<unsigned char>(text[at - 1])) != 0 || text[at - 1] == '-')) --at;
    const bool is_there = text.compare(at, number.size(), number) == 0;
    const bool is_same = is_there && std::string(text).replace(at, number.size(), other_number) == other;
    return is_same ? std::optional(at) : std::nullopt;
}

}  // namespace

KeptTexts::Circumstances::Circumstances(const Layer& layer, const Numbering& numbers, const Layer* above)
    : change_count(layer.change_count()),
      number(numbers.number(layer)),
      parent(number_of(numbers, layer.parent())),
      matte(number_of(numbers, layer.matte())),
      matte_type(layer.matte_type()),
      has_parent(layer.parent() != nullptr),
      has_matte(layer.matte() != nullptr),
      names_matte(document::names_matte(layer, above)),
      keeps_empty_matte(base_of(layer) != nullptr && document::keeps_empty_matte(layer, *base_of(layer), above)),
      is_matte(!layer.matte_users().empty()) {}

void KeptTexts::set_stack(const host::model::Comp& comp, const std::vector<Layer*>& stack) {
    if (&comp != comp_) entries_.clear();
    comp_ = &comp;
    // What changed lies between what stands at the top and at the bottom as before.
    const auto is_same = [](const Entry& entry, const Layer* layer) { return entry.layer == layer; };
    const auto top = std::mismatch(entries_.begin(), entries_.end(), stack.begin(), stack.end(), is_same);
    const auto bottom = std::mismatch(entries_.rbegin(), std::make_reverse_iterator(top.first), stack.rbegin(),
                                      std::make_reverse_iterator(top.second), is_same);
    std::vector<Entry> between;
    for (auto layer = top.second; layer != bottom.second.base(); ++layer) between.push_back({*layer});
    const auto at = entries_.erase(top.first, bottom.first.base());
    entries_.insert(at, std::make_move_iterator(between.begin()), std::make_move_iterator(between.end()));
}

KeptTexts::Text KeptTexts::find(std::size_t place, const Numbering& numbers, const Layer* above) {
    Entry& entry = entries_[place];
    if (entry.text == nullptr) return nullptr;
    const Circumstances now(*entry.layer, numbers, above);
    if (entry.circumstances == now) return entry.text;
    if (!entry.number_at || !now.number || !entry.circumstances->differ_in_number(now)) return nullptr;
    std::string text = *entry.text;
    text.replace(*entry.number_at, std::to_string(*entry.circumstances->number).size(), std::to_string(*now.number));
    entry.circumstances = now;
    entry.text = std::make_shared<const std::string>(std::move(text));
    return entry.text;
}

void KeptTexts::keep(std::size_t place, const Numbering& numbers, const Layer* above, Text text) {
    Entry& entry = entries_[place];
    if (!can_be_kept(*entry.layer)) return;
    const Circumstances now(*entry.layer, numbers, above);
    const bool is_renumbered = entry.text != nullptr && now.number && entry.circumstances->differ_in_number(now);
    entry.number_at = is_renumbered ? place_of_number(*text, std::to_string(*now.number), *entry.text,
                                                      std::to_string(*entry.circumstances->number))
                                    : std::nullopt;
    entry.circumstances = now;
    entry.text = std::move(text);
}

}  // namespace lottie::document
