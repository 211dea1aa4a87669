// A layer as text, with members that can be read and set.
#include "layer_text.h"

#include "document/json_text.h"
#include "document/layer_members.h"
#include "document/object_edit.h"

namespace lottie::mend {

using document::JsonNode;
using document::JsonTree;
using document::Slice;

LayerText::LayerText(std::string own)
    : own_(std::move(own)), text_(own_), where_{0, static_cast<std::uint32_t>(own_.size())} {}

const JsonTree& LayerText::tree() const {
    if (!tree_) tree_.emplace(text_, where_);
    return *tree_;
}

std::string_view LayerText::member(std::string_view key) const {
    if (const auto changed = changes_.find(key); changed != changes_.end()) {
        return changed->second ? std::string_view(*changed->second) : std::string_view();
    }
    const JsonNode* node = tree().member(&tree().root(), key);
    return node == nullptr ? std::string_view() : tree().text(*node);
}

std::optional<double> LayerText::number(std::string_view key) const {
    const std::string_view value = member(key);
    if (value.empty() || (value[0] != '-' && (value[0] < '0' || value[0] > '9'))) return std::nullopt;
    return document::read_number(value);
}

bool LayerText::is_set(std::string_view key) const {
    return member(key) == "true" || number(key, 0) != 0;
}

void LayerText::set(std::string_view key, std::string value) {
    if (member(key) == value) return;
    changes_.insert_or_assign(std::string(key), std::move(value));
}

void LayerText::set_number(std::string_view key, double value) {
    if (number(key) == value) return;
    std::string spelling;
    document::append_number(spelling, value);
    set(key, std::move(spelling));
}

void LayerText::remove(std::string_view key) {
    if (!member(key).empty()) changes_.insert_or_assign(std::string(key), std::nullopt);
}

std::string LayerText::text() const {
    if (!is_changed()) return std::string(where_.of(text_));
    document::ObjectEdit edit(tree(), tree().root(), document::layer_member_order());
    for (const auto& [key, value] : changes_) {
        if (value) {
            edit.set(key, *value);
        } else {
            edit.remove(key);
        }
    }
    document::Patch patch;
    edit.apply(patch);
    document::Written out;
    patch.write(text_, where_, out);
    return out.text();
}

}  // namespace lottie::mend
