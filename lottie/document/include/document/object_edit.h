// Setting, renaming and removing members of an object.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "document/json_tree.h"
#include "document/sequence_edit.h"

namespace lottie::document {

class ObjectEdit {
  public:
    // New members go behind the nearest of those that `order` has before them.
    ObjectEdit(const JsonTree& tree, const JsonNode& object, std::span<const std::string_view> order);

    void set(std::string_view key, std::string value);  // in place if there is one, else new
    void remove(std::string_view key);                  // all of that name
    void rename(std::string_view key, std::string_view to);
    bool has(std::string_view key) const { return tree_.member(&object_, key) != nullptr; }

    void apply(Patch& patch);

  private:
    struct New {
        std::size_t rank;
        std::string text;
    };

    std::size_t rank_of(std::string_view key) const;

    const JsonTree& tree_;
    const JsonNode& object_;
    std::span<const std::string_view> order_;
    std::vector<const JsonNode*> members_;
    SequenceEdit sequence_;
    std::vector<std::pair<Slice, std::string>> replaced_;
    std::vector<New> new_;
};

}  // namespace lottie::document
