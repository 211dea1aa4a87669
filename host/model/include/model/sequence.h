// A balanced sequence of pointers whose elements know their position and can be marked.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace host::model {

// A treap with parent links: insert, erase, move, lookup by position and position of an element take logarithmic time.
// Priorities come from a fixed generator, so the same calls build the same tree. Owns its nodes, not the elements.
// Positions must be in range.
template <class T>
class Sequence {
  public:
    struct Node {
        T* value;
        Node* parent = nullptr;
        Node* left = nullptr;
        Node* right = nullptr;
        std::uint32_t priority = 0;
        int size = 1;  // of the subtree
        int marks = 0;
        bool marked = false;
    };

    Sequence() = default;
    ~Sequence() {
        for (Node* node = leftmost(root_); node != nullptr;) {
            Node* parent = node->parent;
            if (node->right != nullptr) {
                Node* right = node->right;
                node->right = nullptr;
                node = leftmost(right);
                continue;
            }
            if (parent != nullptr && parent->left == node) parent->left = nullptr;
            delete node;
            node = parent;
        }
    }
    Sequence(const Sequence&) = delete;
    Sequence& operator=(const Sequence&) = delete;

    int size() const { return size_of(root_); }
    // 0 <= index < size()
    T* at(int index) const {
        Node* node = root_;
        for (;;) {
            const int before = size_of(node->left);
            if (index == before) return node->value;
            if (index < before) {
                node = node->left;
            } else {
                index -= before + 1;
                node = node->right;
            }
        }
    }
    static int index_of(const Node* node) {
        int index = size_of(node->left);
        for (; node->parent != nullptr; node = node->parent) {
            if (node->parent->right == node) index += size_of(node->parent->left) + 1;
        }
        return index;
    }
    // The next element, null at the end.
    static T* next(const Node* node) {
        const Node* after = successor(node);
        return after != nullptr ? after->value : nullptr;
    }
    // 0 <= index <= size(); the node stays valid until erased
    Node* insert(int index, T* value) {
        Node* node = new Node{.value = value, .priority = next_priority()};
        put(index, node);
        return node;
    }
    void erase(Node* node) {
        take(node);
        delete node;
    }
    // 0 <= final_index < size()
    void move(Node* node, int final_index) {
        take(node);
        put(final_index, node);
    }
    // First to last, linear.
    std::vector<T*> to_vector() const {
        std::vector<T*> all;
        all.reserve(static_cast<std::size_t>(size()));
        for (const Node* node = leftmost(root_); node != nullptr; node = successor(node)) all.push_back(node->value);
        return all;
    }

    // Marks move with their elements and are lost when these are erased.
    void mark(Node* node, bool marked) {
        if (node->marked == marked) return;
        node->marked = marked;
        for (Node* at = node; at != nullptr; at = at->parent) at->marks += marked ? 1 : -1;
    }
    // The first marked element, null if none; logarithmic.
    T* first_marked() const {
        Node* node = root_;
        if (marks_of(node) == 0) return nullptr;
        for (;;) {
            if (marks_of(node->left) > 0) {
                node = node->left;
            } else if (node->marked) {
                return node->value;
            } else {
                node = node->right;
            }
        }
    }

  private:
    static int size_of(const Node* node) { return node != nullptr ? node->size : 0; }
    static int marks_of(const Node* node) { return node != nullptr ? node->marks : 0; }
    static Node* leftmost(Node* node) {
        while (node != nullptr && node->left != nullptr) node = node->left;
        return node;
    }
    static const Node* successor(const Node* node) {
        if (node->right != nullptr) return leftmost(node->right);
        while (node->parent != nullptr && node->parent->right == node) node = node->parent;
        return node->parent;
    }
    static void sum_up(Node* node) {
        node->size = size_of(node->left) + 1 + size_of(node->right);
        node->marks = marks_of(node->left) + (node->marked ? 1 : 0) + marks_of(node->right);
    }
    std::uint32_t next_priority() {
        random_ ^= random_ << 13;
        random_ ^= random_ >> 17;
        random_ ^= random_ << 5;
        return random_;
    }
    void replace_child(Node* parent, const Node* old_child, Node* new_child) {
        if (parent == nullptr) {
            root_ = new_child;
        } else if (parent->left == old_child) {
            parent->left = new_child;
        } else {
            parent->right = new_child;
        }
        if (new_child != nullptr) new_child->parent = parent;
    }
    // Rotates a node above its parent.
    void lift(Node* node) {
        Node* parent = node->parent;
        replace_child(parent->parent, parent, node);
        if (parent->left == node) {
            parent->left = node->right;
            if (parent->left != nullptr) parent->left->parent = parent;
            node->right = parent;
        } else {
            parent->right = node->left;
            if (parent->right != nullptr) parent->right->parent = parent;
            node->left = parent;
        }
        parent->parent = node;
        sum_up(parent);
        sum_up(node);
    }
    void put(int index, Node* node) {
        node->left = node->right = node->parent = nullptr;
        sum_up(node);
        if (root_ == nullptr) {
            root_ = node;
            return;
        }
        Node* at = root_;
        for (;;) {
            at->size += 1;
            at->marks += node->marks;
            const int before = size_of(at->left);
            Node*& next = index <= before ? at->left : at->right;
            if (index > before) index -= before + 1;
            if (next == nullptr) {
                next = node;
                node->parent = at;
                break;
            }
            at = next;
        }
        while (node->parent != nullptr && node->parent->priority < node->priority) lift(node);
    }
    void take(Node* node) {
        while (node->left != nullptr && node->right != nullptr) {
            lift(node->left->priority > node->right->priority ? node->left : node->right);
        }
        Node* child = node->left != nullptr ? node->left : node->right;
        Node* parent = node->parent;
        replace_child(parent, node, child);
        for (; parent != nullptr; parent = parent->parent) sum_up(parent);
    }

    Node* root_ = nullptr;
    std::uint32_t random_ = 0x9e3779b9;
};

}  // namespace host::model
