// A layer's content as a tree of slices.
#include "document/json_tree.h"

#include <algorithm>
#include <array>

#include "base/json_marks.h"
#include "document/json_text.h"
#include "shared/refuse.h"

namespace lottie::document {

namespace {

bool is_blank(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

// Of numbers and what may stand between them, brackets apart.
constexpr auto kIsOfNumbers = [] {
    std::array<bool, 256> is{};
    for (const char c : {'+', '-', '.', 'e', 'E', ',', ' ', '\n', '\r', '\t'}) is[static_cast<unsigned char>(c)] = true;
    for (char c = '0'; c <= '9'; ++c) is[static_cast<unsigned char>(c)] = true;
    return is;
}();

bool is_of_numbers(char c) {
    return kIsOfNumbers[static_cast<unsigned char>(c)];
}

// Of the characters at which a number or a name ends, and a text does.
constexpr auto kIsEndOfPlain = [] {
    std::array<bool, 256> is{};
    for (const char c : {',', ']', '}', ' ', '\n', '\r', '\t', '\0'}) is[static_cast<unsigned char>(c)] = true;
    return is;
}();

// Of most arrays that somebody reads.
constexpr std::size_t kSpaceDimensions = 3;

// Most of a layer's text, as a rule.
constexpr std::string_view kMasks = R"("masksProperties")";
constexpr std::array<std::string_view, 3> kOtherStreams = {R"("shapes")", kMasks, R"("t")"};

}  // namespace

// Builds the tree in one pass over text that is known to be JSON; on any other it ends somewhere, inside the text.
// Behind the text stands a character, if only the null of the string that it is part of.
class JsonTreeBuilder {
  public:
    JsonTreeBuilder(JsonTree& tree, std::string_view text, std::uint32_t begin, JsonTree::Depth depth, Slice bulk)
        : tree_(tree), text_(text), at_(begin), depth_(depth), bulk_(bulk) {}

    void build() {
        do {
            while (is_blank(here()) || here() == ',' || here() == ':') ++at_;
            if (at_ == text_.size()) break;
            take();
        } while (!open_.empty());
        while (!open_.empty()) close();  // only where the text is not JSON
    }

  private:
    struct OpenContainer {
        std::uint32_t node;
        std::uint32_t last_child;
    };

    char here() const { return at_ < text_.size() ? text_[at_] : '\0'; }

    void take() {
        if (here() == '{' || here() == '[') {
            if (const std::uint32_t end = end_of_leaf()) {
                add(here() == '{' ? JsonKind::object : JsonKind::array, end);
                return;
            }
        }
        switch (here()) {
            case '{':
                return open(JsonKind::object);
            case '[':
                if (const std::uint32_t end = end_of_numeric_array()) {
                    JsonNode& node = add(JsonKind::array, end);
                    node.is_numeric = true;
                    return;
                }
                return open(JsonKind::array);
            case '}':
            case ']':
                ++at_;
                if (!open_.empty()) close();
                return;
            case '"':
                return take_string();
            case 'n':
                return take_plain(JsonKind::null);
            case 't':
                return take_plain(JsonKind::yes);
            case 'f':
                return take_plain(JsonKind::no);
            default:
                return take_plain(JsonKind::number);
        }
    }

    // Behind the container that begins here, if it is a leaf whatever it holds; else 0.
    std::uint32_t end_of_leaf() const {
        if (depth_ == JsonTree::Depth::all || open_.empty()) return 0;
        if (depth_ == JsonTree::Depth::members) return end_of_container();
        const std::string_view key = key_.of(text_);
        if (open_.size() > 1 || std::find(kOtherStreams.begin(), kOtherStreams.end(), key) == kOtherStreams.end() ||
            (depth_ == JsonTree::Depth::masks && key == kMasks))
            return 0;
        const std::uint32_t end = end_of_container();
        return depth_ == JsonTree::Depth::keyframes && may_hold_keyframes(text_.substr(at_, end - at_)) ? 0 : end;
    }

    // A key may be spelled with escapes.
    static bool may_hold_keyframes(std::string_view text) {
        return text.find(R"("t")") != std::string_view::npos || text.find('\\') != std::string_view::npos;
    }

    std::uint32_t end_of_string(std::size_t begin) const {
        std::size_t end = begin + 1;
        while (end < text_.size() && text_[end] != '"') end += text_[end] == '\\' ? 2U : 1U;
        return static_cast<std::uint32_t>(std::min(end + 1, text_.size()));
    }

    // Behind the container that begins here.
    std::uint32_t end_of_container() const {
        if (at_ == bulk_.begin && !bulk_.empty()) return bulk_.end;
        const char* const text = text_.data();
        const char* const behind =
            host::base::behind_json_container(text + at_, text + text_.size(), "", [](std::string_view) {});
        return static_cast<std::uint32_t>(behind == nullptr ? text_.size() : static_cast<std::size_t>(behind - text));
    }

    void take_string() {
        const std::uint32_t behind = end_of_string(at_);
        const bool is_key = !open_.empty() && tree_.nodes_[open_.back().node].kind == JsonKind::object && key_.empty();
        if (is_key) {
            key_ = {at_, behind};
            at_ = behind;
        } else {
            add(JsonKind::string, behind);
        }
    }

    void take_plain(JsonKind kind) {
        const char* end = text_.data() + at_ + 1;
        while (!kIsEndOfPlain[static_cast<unsigned char>(*end)]) ++end;
        add(kind, static_cast<std::uint32_t>(std::min(static_cast<std::size_t>(end - text_.data()), text_.size())));
    }

    // Adds what stands between here and `end`, and goes there.
    JsonNode& add(JsonKind kind, std::uint32_t end) {
        const auto index = static_cast<std::uint32_t>(tree_.nodes_.size());
        JsonNode& node = tree_.nodes_.emplace_back();
        node.kind = kind;
        node.text = {at_, end};
        node.key = key_;
        key_ = {};
        at_ = end;
        if (!open_.empty()) {
            OpenContainer& parent = open_.back();
            if (parent.last_child == 0) {
                tree_.nodes_[parent.node].first = index;
            } else {
                tree_.nodes_[parent.last_child].next = index;
            }
            parent.last_child = index;
        }
        return node;
    }

    void open(JsonKind kind) {
        add(kind, at_ + 1);
        open_.push_back({static_cast<std::uint32_t>(tree_.nodes_.size() - 1), 0});
    }

    void close() {
        tree_.nodes_[open_.back().node].text.end = at_;
        open_.pop_back();
    }

    // Behind the array that begins here, if it is a leaf; else 0. Where it is not, neither are those that are open at
    // the place that shows it; they are remembered, so that no place is looked at often.
    std::uint32_t end_of_numeric_array() {
        if (next_known_ < known_.size() && known_[next_known_] == at_) {
            ++next_known_;
            return 0;
        }
        const char* const text = text_.data();
        if (const char* behind = host::base::behind_number_array(text + at_, text + text_.size()))
            return static_cast<std::uint32_t>(behind - text);
        known_.clear();
        for (const char* at = text + at_; at != text + text_.size(); ++at) {
            if (*at == '[') {
                known_.push_back(static_cast<std::uint32_t>(at - text));
            } else if (*at == ']') {
                known_.pop_back();
            } else if (!is_of_numbers(*at)) {
                break;
            }
        }
        next_known_ = 1;
        return 0;
    }

    JsonTree& tree_;
    std::string_view text_;
    std::uint32_t at_;
    JsonTree::Depth depth_;
    Slice bulk_;
    Slice key_;
    std::vector<OpenContainer> open_;
    std::vector<std::uint32_t> known_;  // beginnings of arrays that are no leaves
    std::size_t next_known_ = 0;
};

JsonTree::JsonTree(const std::string& text, Slice what, Depth depth, Slice bulk) : text_(text) {
    JsonTreeBuilder(*this, std::string_view(text).substr(0, what.end), what.begin, depth, bulk).build();
}

bool JsonTree::has_key(const JsonNode& node, std::string_view key) const {
    if (node.key.empty()) return false;
    // Most keys differ in the first character.
    const char first = text_[node.key.begin + 1];
    if (first != '\\' && !key.empty() && first != key.front()) return false;
    return string_equals(node.key.of(text_), key);
}

const JsonNode* JsonTree::member(const JsonNode* object, std::string_view key) const {
    if (object == nullptr || object->kind != JsonKind::object) return nullptr;
    const JsonNode* found = nullptr;
    for (const JsonNode* child = first(*object); child != nullptr; child = next(*child)) {
        if (has_key(*child, key)) found = child;
    }
    return found != nullptr && found->kind == JsonKind::null ? nullptr : found;
}

std::vector<const JsonNode*> JsonTree::children(const JsonNode& node) const {
    std::vector<const JsonNode*> all;
    for (const JsonNode* child = first(node); child != nullptr; child = next(*child)) all.push_back(child);
    return all;
}

double JsonTree::number(const JsonNode& node) const {
    return read_number(text(node));
}

// Calls on_number(spelling) for a number, or for those of an array of numbers.
template <class OnNumber>
void JsonTree::each_number(const JsonNode& node, OnNumber on_number) const {
    if (node.kind == JsonKind::number) return on_number(node.text);
    if (!node.is_numeric) return;
    const auto is_between = [this](std::uint32_t at) {
        return text_[at] == '[' || kIsEndOfPlain[static_cast<unsigned char>(text_[at])];
    };
    for (std::uint32_t at = node.text.begin; at < node.text.end;) {
        if (is_between(at)) {
            ++at;
            continue;
        }
        const std::uint32_t begin = at;
        while (!is_between(at)) ++at;
        on_number(Slice{begin, at});
    }
}

std::vector<Slice> JsonTree::number_slices(const JsonNode& node) const {
    std::vector<Slice> slices;
    each_number(node, [&slices](Slice spelling) { slices.push_back(spelling); });
    return slices;
}

std::vector<double> JsonTree::numbers(const JsonNode& node) const {
    std::vector<double> values;
    values.reserve(kSpaceDimensions);
    each_number(node, [this, &values](Slice spelling) { values.push_back(read_number(spelling.of(text_))); });
    return values;
}

std::string JsonTree::pointer(const JsonNode& node) const {
    std::string path;
    const JsonNode* at = &root();
    while (at->text != node.text) {
        std::size_t index = 0;
        const JsonNode* child = first(*at);
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

const JsonNode* JsonTree::at(std::string_view pointer) const {
    const JsonNode* at = &root();
    while (!pointer.empty() && at != nullptr) {
        const std::size_t end = pointer.find('/', 1);
        const std::string_view step = pointer.substr(0, end);
        pointer = end == std::string_view::npos ? std::string_view() : pointer.substr(end);
        const JsonNode* found = nullptr;
        std::size_t index = 0;
        for (const JsonNode* child = first(*at); child != nullptr; child = next(*child), ++index) {
            const std::string key = child->key.empty() ? std::to_string(index) : decode_string(child->key.of(text_));
            if (pointer_step(key) == step) found = child;
        }
        at = found;
    }
    return at;
}

}  // namespace lottie::document
