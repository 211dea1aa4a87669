// A layer's content as a tree of slices.
#include "tree.h"

#include <rapidjson/reader.h>

#include "json_text.h"
#include "refuse.h"
#include "scan_stream.h"

namespace host::lottie {

class TreeBuilder {
  public:
    TreeBuilder(Tree& tree, const ScanStream& stream) : tree_(tree), stream_(stream) {}

    bool Null() { return plain(Kind::null); }
    bool Bool(bool value) { return plain(value ? Kind::yes : Kind::no); }
    bool Int(int) { return plain(Kind::number); }
    bool Uint(unsigned) { return plain(Kind::number); }
    bool Int64(std::int64_t) { return plain(Kind::number); }
    bool Uint64(std::uint64_t) { return plain(Kind::number); }
    bool Double(double) { return plain(Kind::number); }
    bool RawNumber(const char*, unsigned, bool) { return plain(Kind::number); }
    bool String(const char* inside, unsigned, bool) { return scalar(Kind::string, literal(inside)); }
    bool Key(const char* inside, unsigned, bool) {
        key_ = literal(inside);
        return true;
    }
    bool StartObject() { return open(Kind::object); }
    bool StartArray() { return open(Kind::array); }
    bool EndObject(unsigned) { return close(); }
    bool EndArray(unsigned) { return close(); }

  private:
    struct Open {
        std::uint32_t node;
        std::uint32_t last_child;
        bool is_numeric;
    };

    std::uint32_t here() const { return static_cast<std::uint32_t>(stream_.Tell()); }

    Slice literal(const char* inside) const {
        return {static_cast<std::uint32_t>(inside - tree_.text_.data()) - 1, here()};
    }

    bool plain(Kind kind) { return scalar(kind, plain_scalar_before(tree_.text_, here())); }

    std::uint32_t add(Kind kind, Slice text) {
        const auto index = static_cast<std::uint32_t>(tree_.nodes_.size());
        Tree::Node& node = tree_.nodes_.emplace_back();
        node.kind = kind;
        node.text = text;
        node.key = key_;
        key_ = {};
        if (!open_.empty()) {
            Open& parent = open_.back();
            if (parent.last_child == 0) {
                tree_.nodes_[parent.node].first = index;
            } else {
                tree_.nodes_[parent.last_child].next = index;
            }
            parent.last_child = index;
        }
        return index;
    }

    bool scalar(Kind kind, Slice text) {
        add(kind, text);
        if (kind != Kind::number && !open_.empty()) open_.back().is_numeric = false;
        return true;
    }

    bool open(Kind kind) {
        const std::uint32_t index = add(kind, {here() - 1, here()});
        open_.push_back({index, 0, kind == Kind::array});
        return true;
    }

    bool close() {
        const Open closed = open_.back();
        Tree::Node& node = tree_.nodes_[closed.node];
        open_.pop_back();
        node.text.end = here();
        node.is_numeric = closed.is_numeric;
        if (closed.is_numeric) {
            tree_.nodes_.resize(closed.node + 1);
            tree_.nodes_[closed.node].first = 0;
        } else if (!open_.empty()) {
            open_.back().is_numeric = false;
        }
        return true;
    }

    Tree& tree_;
    const ScanStream& stream_;
    Slice key_;
    std::vector<Open> open_;
};

Tree::Tree(const std::string& text, Slice what) : text_(text) {
    ScanStream stream(text.c_str(), text.c_str() + what.begin);
    TreeBuilder builder(*this, stream);
    rapidjson::Reader reader;
    reader.Parse<kScanFlags | rapidjson::kParseStopWhenDoneFlag>(stream, builder);
}

bool Tree::has_key(const Node& node, std::string_view key) const {
    return string_equals(node.key.of(text_), key);
}

const Tree::Node* Tree::member(const Node* object, std::string_view key) const {
    if (object == nullptr || object->kind != Kind::object) return nullptr;
    const Node* found = nullptr;
    for (const Node* child = first(*object); child != nullptr; child = next(*child)) {
        if (has_key(*child, key)) found = child;
    }
    return found != nullptr && found->kind == Kind::null ? nullptr : found;
}

std::vector<const Tree::Node*> Tree::children(const Node& node) const {
    std::vector<const Node*> all;
    for (const Node* child = first(node); child != nullptr; child = next(*child)) all.push_back(child);
    return all;
}

double Tree::number(const Node& node) const {
    return read_number(text(node));
}

std::vector<Slice> Tree::number_slices(const Node& node) const {
    if (node.kind == Kind::number) return {node.text};
    std::vector<Slice> slices;
    if (!node.is_numeric) return slices;
    constexpr std::string_view kBetween = "[], \n\r\t";
    for (std::uint32_t at = node.text.begin; at < node.text.end;) {
        if (kBetween.find(text_[at]) != std::string_view::npos) {
            ++at;
            continue;
        }
        const std::uint32_t begin = at;
        while (kBetween.find(text_[at]) == std::string_view::npos) ++at;
        slices.push_back({begin, at});
    }
    return slices;
}

std::vector<double> Tree::numbers(const Node& node) const {
    std::vector<double> values;
    for (const Slice slice : number_slices(node)) values.push_back(read_number(slice.of(text_)));
    return values;
}

std::string Tree::pointer(const Node& node) const {
    std::string path;
    const Node* at = &root();
    while (at->text != node.text) {
        std::size_t index = 0;
        const Node* child = first(*at);
        while (child != nullptr && !child->text.contains(node.text)) {
            child = next(*child);
            ++index;
        }
        if (child == nullptr) break;  // a number inside a leaf
        path += pointer_step(child->key.empty() ? std::to_string(index) : decode_string(child->key.of(text_)));
        at = child;
    }
    return path;
}

const Tree::Node* Tree::at(std::string_view pointer) const {
    const Node* at = &root();
    while (!pointer.empty() && at != nullptr) {
        const std::size_t end = pointer.find('/', 1);
        const std::string_view step = pointer.substr(0, end);
        pointer = end == std::string_view::npos ? std::string_view() : pointer.substr(end);
        const Node* found = nullptr;
        std::size_t index = 0;
        for (const Node* child = first(*at); child != nullptr; child = next(*child), ++index) {
            const std::string key = child->key.empty() ? std::to_string(index) : decode_string(child->key.of(text_));
            if (pointer_step(key) == step) found = child;
        }
        at = found;
    }
    return at;
}

}  // namespace host::lottie
