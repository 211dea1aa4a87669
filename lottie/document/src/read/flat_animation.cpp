// Whether an animation that cannot be worked with may pass as it is.
#include "read/flat_animation.h"

#include <rapidjson/reader.h>

#include "base/json_memory.h"
#include "document/json_tree.h"
#include "read/scanner.h"
#include "shared/layer_types.h"

namespace lottie::document {
namespace {

// Lets anything pass that is not too deep.
struct DepthLimit : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, DepthLimit> {
    bool StartObject() { return ++depth <= kMaxNesting; }
    bool StartArray() { return ++depth <= kMaxNesting; }
    bool EndObject(rapidjson::SizeType) { return --depth >= 0; }
    bool EndArray(rapidjson::SizeType) { return --depth >= 0; }
    int depth = 0;
};

bool shows_comps(const JsonTree& tree, const JsonNode* layers) {
    if (layers == nullptr) return false;
    for (const JsonNode* layer = tree.first(*layers); layer != nullptr; layer = tree.next(*layer)) {
        const JsonNode* type = tree.member(layer, "ty");
        if (type != nullptr && type->kind == JsonKind::number && tree.number(*type) == kCompType) return true;
    }
    return false;
}

}  // namespace

bool is_flat_animation(const std::string& text) {
    const std::size_t start = text.find('{');
    if (start == std::string::npos || text.size() > kMaxTextSize) return false;
    ScanStream stream(text.c_str(), text.c_str() + start);
    DepthLimit limit;
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, host::base::JsonMemory> reader;
    const auto result = reader.Parse<kScanFlags | rapidjson::kParseValidateEncodingFlag>(stream, limit);
    if (result.IsError() || stream.Tell() != text.size()) return false;
    const JsonTree tree(text, {static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(text.size())});
    for (const char* key : {"fr", "ip", "op", "w", "h"}) {
        if (tree.member(&tree.root(), key) == nullptr) return false;
    }
    const JsonNode* layers = tree.member(&tree.root(), "layers");
    if (layers == nullptr || layers->kind != JsonKind::array || shows_comps(tree, layers)) return false;
    const JsonNode* assets = tree.member(&tree.root(), "assets");
    for (const JsonNode* asset = assets == nullptr ? nullptr : tree.first(*assets); asset != nullptr;
         asset = tree.next(*asset)) {
        if (shows_comps(tree, tree.member(asset, "layers"))) return false;
    }
    return true;
}

}  // namespace lottie::document
