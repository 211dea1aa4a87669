// A layer's content as a tree of slices.
#include "tree.h"

#include <rapidjson/reader.h>

#include <charconv>

#include "json_text.h"
#include "refuse.h"
#include "scan_stream.h"

namespace host::lottie {

class TreeBuilder {
  public:
    TreeBuilder(Tree& tree, const ScanStream& stream, std::uint32_t start)
        : tree_(tree), stream_(stream), last_end_(start) {}

    bool Null() { return scalar(Kind::null); }
    bool Bool(bool value) { return scalar(value ? Kind::yes : Kind::no); }
    bool Int(int) { return scalar(Kind::number); }
    bool Uint(unsigned) { return scalar(Kind::number); }
    bool Int64(std::int64_t) { return scalar(Kind::number); }
    bool Uint64(std::uint64_t) { return scalar(Kind::number); }
    bool Double(double) { return scalar(Kind::number); }
    bool RawNumber(const char*, unsigned, bool) { return scalar(Kind::number); }
    bool String(const char*, unsigned, bool) { return scalar(Kind::string); }
    bool Key(const char*, unsigned, bool) {
        key_ = {scalar_begin(), here()};
        last_end_ = key_.end;
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

    std::uint32_t scalar_begin() const {
        std::uint32_t begin = last_end_;
        for (;; ++begin) {
            const char c = tree_.text_[begin];
            if (c != ' ' && c != '\n' && c != '\r' && c != '\t' && c != ':' && c != ',') return begin;
        }
    }

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

    bool scalar(Kind kind) {
        add(kind, {scalar_begin(), here()});
        if (kind != Kind::number && !open_.empty()) open_.back().is_numeric = false;
        last_end_ = here();
        return true;
    }

    bool open(Kind kind) {
        const std::uint32_t index = add(kind, {here() - 1, here()});
        last_end_ = here();
        open_.push_back({index, 0, kind == Kind::array});
        return true;
    }

    bool close() {
        const Open closed = open_.back();
        Tree::Node& node = tree_.nodes_[closed.node];
        open_.pop_back();
        node.text.end = last_end_ = here();
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
    std::uint32_t last_end_;
    Slice key_;
    std::vector<Open> open_;
};

Tree::Tree(const std::string& text, Slice what) : text_(text) {
    ScanStream stream(text.c_str(), text.c_str() + what.begin);
    TreeBuilder builder(*this, stream, what.begin);
    rapidjson::Reader reader;
    reader.Parse<rapidjson::kParseStopWhenDoneFlag>(stream, builder);
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
