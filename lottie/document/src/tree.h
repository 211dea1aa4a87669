// A layer's content as a tree of slices, made when somebody asks for it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "skeleton.h"
#include "slice.h"

namespace lottie::document {

// Arrays that hold nothing but numbers and such arrays are leaves: most of an animation is curves, and nobody looks at
// their points one by one.
class Tree {
  public:
    struct Node {
        Kind kind = Kind::none;
        bool is_numeric = false;  // an array that is a leaf
        Slice text;
        Slice key;                // with quotes; empty for elements
        std::uint32_t next = 0;   // the following sibling, 0 for none
        std::uint32_t first = 0;  // the first child, 0 for none
    };

    // `what` is one value inside `text`, which was found to be JSON before and must outlive the tree.
    Tree(const std::string& text, Slice what);

    const Node& root() const { return nodes_.front(); }
    std::string_view text(const Node& node) const { return node.text.of(text_); }
    const std::string& whole_text() const { return text_; }

    // The last member of that name that is not null; null if there is none. `object` may be null and of any kind.
    const Node* member(const Node* object, std::string_view key) const;
    bool has_key(const Node& node, std::string_view key) const;

    // for (const Node* child = tree.first(node); child; child = tree.next(*child))
    const Node* first(const Node& node) const { return node.first == 0 ? nullptr : &nodes_[node.first]; }
    const Node* next(const Node& node) const { return node.next == 0 ? nullptr : &nodes_[node.next]; }
    std::vector<const Node*> children(const Node& node) const;

    double number(const Node& node) const;
    // The spellings of a number, or of an array of numbers; empty for anything else.
    std::vector<Slice> number_slices(const Node& node) const;
    std::vector<double> numbers(const Node& node) const;

    // JSON pointer from the root to a node, which may be another tree's over the same text.
    std::string pointer(const Node& node) const;
    // The node at such a pointer; null if there is none.
    const Node* at(std::string_view pointer) const;

  private:
    friend class TreeBuilder;

    const std::string& text_;
    std::vector<Node> nodes_;
};

}  // namespace lottie::document
