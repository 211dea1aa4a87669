// A layer as text, with members that can be read and set.
#include "layer_text.h"

#include <algorithm>

#include "document/json_text.h"
#include "document/layer_members.h"
#include "document/object_edit.h"

namespace lottie::mend {

using document::JsonKind;
using document::JsonNode;
using document::JsonTree;
using document::Slice;

LayerText::LayerText(std::string own)
    : own_(std::move(own)), text_(own_), where_{0, static_cast<std::uint32_t>(own_.size())} {}

const JsonTree& LayerText::tree() const {
    if (!tree_) tree_.emplace(text_, where_, JsonTree::Depth::masks);
    return *tree_;
}

const JsonTree& LayerText::members() const {
    if (tree_) return *tree_;
    if (!members_) members_.emplace(text_, where_, JsonTree::Depth::members);
    return *members_;
}

std::string_view LayerText::member(std::string_view key) const {
    if (const auto changed = changes_.find(key); changed != changes_.end()) {
        return changed->second ? std::string_view(*changed->second) : std::string_view();
    }
    const JsonNode* node = members().member(&members().root(), key);
    return node == nullptr ? std::string_view() : members().text(*node);
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

void LayerText::take(std::string_view key, const LayerText& other) {
    const std::string value(other.member(key));
    if (value.empty()) {
        remove(key);
    } else {
        set(key, value);
    }
}

void LayerText::set_inside(std::string_view key, std::string_view inner, std::string value) {
    const std::string object(member(key));
    if (!object.starts_with('{')) return;
    const Slice all{0, static_cast<std::uint32_t>(object.size())};
    const JsonTree inside(object, all);
    document::ObjectEdit edit(inside, inside.root(), {});
    edit.set(inner, std::move(value));
    document::Patch patch;
    edit.apply(patch);
    document::OutputText out;
    patch.write(object, all, out);
    set(key, out.text());
}

std::vector<std::string> LayerText::keys() const {
    std::vector<std::string> keys;
    for (const JsonNode* member : members().children(members().root()))
        keys.push_back(document::decode_string(member->key.of(text_)));
    for (const auto& [key, value] : changes_) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
    }
    return keys;
}

void LayerText::rewrite_expressions(const std::function<std::optional<std::string>(const std::string&)>& rewrite) {
    for (const std::string& key : keys()) {
        const std::string value(member(key));
        if (value.find("\"x\"") == std::string::npos) continue;
        const JsonTree inside(value, {0, static_cast<std::uint32_t>(value.size())});
        document::Patch patch;
        std::vector<const JsonNode*> open = {&inside.root()};
        while (!open.empty()) {
            const JsonNode& node = *open.back();
            open.pop_back();
            const auto children = inside.children(node);
            for (auto child = children.rbegin(); child != children.rend(); ++child) {
                if ((*child)->kind == JsonKind::object || (*child)->kind == JsonKind::array) open.push_back(*child);
            }
            const JsonNode* expression = inside.member(&node, "x");
            if (expression == nullptr || expression->kind != JsonKind::string) continue;
            const auto text = rewrite(document::decode_string(inside.text(*expression)));
            if (text) patch.replace(expression->text, document::encode_string(*text));
        }
        if (patch.is_empty()) continue;
        document::OutputText out;
        patch.write(value, {0, static_cast<std::uint32_t>(value.size())}, out);
        set(key, out.text());
    }
}

std::string LayerText::text() const {
    if (!is_changed()) return std::string(where_.of(text_));
    document::ObjectEdit edit(members(), members().root(), document::layer_member_order());
    for (const auto& [key, value] : changes_) {
        if (value) {
            edit.set(key, *value);
        } else {
            edit.remove(key);
        }
    }
    document::Patch patch;
    edit.apply(patch);
    document::OutputText out;
    patch.write(text_, where_, out);
    return out.text();
}

}  // namespace lottie::mend
