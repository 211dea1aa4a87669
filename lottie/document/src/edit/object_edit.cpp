// Setting, renaming and removing members of an object.
#include "document/object_edit.h"

#include <algorithm>

#include "document/json_text.h"

namespace lottie::document {
namespace {

std::vector<Slice> units_of(const std::vector<const JsonNode*>& members) {
    std::vector<Slice> units;
    units.reserve(members.size());
    for (const JsonNode* member : members) units.push_back({member->key.begin, member->text.end});
    return units;
}

}  // namespace

ObjectEdit::ObjectEdit(const JsonTree& tree, const JsonNode& object, std::span<const std::string_view> order)
    : tree_(tree),
      object_(object),
      order_(order),
      members_(tree.children(object)),
      sequence_(tree.whole_text(), object.text, units_of(members_)) {}

std::size_t ObjectEdit::rank_of(std::string_view key) const {
    return static_cast<std::size_t>(std::find(order_.begin(), order_.end(), key) - order_.begin());
}

void ObjectEdit::set(std::string_view key, std::string value) {
    for (auto member = members_.rbegin(); member != members_.rend(); ++member) {
        if (!tree_.has_key(**member, key)) continue;
        replaced_.emplace_back((*member)->text, std::move(value));
        return;
    }
    new_.push_back({rank_of(key), encode_string(key) + ":" + value});
}

void ObjectEdit::remove(std::string_view key) {
    for (std::size_t i = 0; i < members_.size(); ++i) {
        if (tree_.has_key(*members_[i], key)) sequence_.remove(i);
    }
}

void ObjectEdit::rename(std::string_view key, std::string_view to) {
    for (const JsonNode* member : members_) {
        if (tree_.has_key(*member, key)) replaced_.emplace_back(member->key, encode_string(to));
    }
}

void ObjectEdit::apply(Patch& patch) {
    std::stable_sort(new_.begin(), new_.end(), [](const New& a, const New& b) { return a.rank < b.rank; });
    for (New& added : new_) {
        std::size_t place = 0;
        std::size_t best = 0;
        for (std::size_t i = 0; i < members_.size(); ++i) {
            const std::size_t rank = rank_of(decode_string(members_[i]->key.of(tree_.whole_text())));
            const bool is_known = rank < order_.size();
            if (is_known && rank < added.rank && rank + 1 >= best) {
                best = rank + 1;
                place = i + 1;
            }
        }
        sequence_.insert_before(place, std::move(added.text));
    }
    for (auto& [where, text] : replaced_) patch.replace(where, std::move(text));
    sequence_.apply(patch);
}

}  // namespace lottie::document
