// A layer's content as a tree of slices, made when somebody asks for it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "document/outline.h"
#include "document/slice.h"

namespace lottie::document {

struct JsonNode {
    JsonKind kind = JsonKind::none;
    bool is_numeric = false;  // an array that is a leaf
    Slice text;
    Slice key;                // with quotes; empty for elements
    std::uint32_t next = 0;   // the following sibling, 0 for none
    std::uint32_t first = 0;  // the first child, 0 for none
};

// Arrays that hold nothing but numbers and such arrays are leaves: most of an animation is curves, and nobody looks at
// their points one by one.
class JsonTree {
  public:
    enum class Depth {
        all,
        members,      // what the root holds are leaves, whatever they hold
        own_streams,  // the shapes, masks and text that the root, a layer, holds are leaves
        masks,        // the shapes and text are
        keyframes,    // those of them that hold none are leaves
    };

    // `what` is one value inside `text`, which was found to be JSON before and must outlive the tree. `bulk` is a
    // container in it whose place is known, so that its end need not be looked for if it is a leaf.
    JsonTree(const std::string& text, Slice what, Depth depth = Depth::all, Slice bulk = {});

    const JsonNode& root() const { return nodes_.front(); }
    std::string_view text(const JsonNode& node) const { return node.text.of(text_); }
    const std::string& whole_text() const { return text_; }

    // The last member of that name that is not null; null if there is none. `object` may be null and of any kind.
    const JsonNode* member(const JsonNode* object, std::string_view key) const;
    bool has_key(const JsonNode& node, std::string_view key) const;

    // for (const JsonNode* child = tree.first(node); child; child = tree.next(*child))
    const JsonNode* first(const JsonNode& node) const { return node.first == 0 ? nullptr : &nodes_[node.first]; }
    const JsonNode* next(const JsonNode& node) const { return node.next == 0 ? nullptr : &nodes_[node.next]; }
    std::vector<const JsonNode*> children(const JsonNode& node) const;

    double number(const JsonNode& node) const;
    // The spellings of a number, or of an array of numbers; empty for anything else.
    std::vector<Slice> number_slices(const JsonNode& node) const;
    std::vector<double> numbers(const JsonNode& node) const;

    // JSON pointer from the root to a node, which may be another tree's over the same text.
    std::string pointer(const JsonNode& node) const;
    // The node at such a pointer; null if there is none.
    const JsonNode* at(std::string_view pointer) const;

  private:
    friend class JsonTreeBuilder;

    template <class OnNumber>
    void each_number(const JsonNode& node, OnNumber on_number) const;

    const std::string& text_;
    std::vector<JsonNode> nodes_;
};

}  // namespace lottie::document
