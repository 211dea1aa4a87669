// An animated property of the file, taken apart.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "document/json_tree.h"
#include "model/stream.h"
#include "shared/store.h"

namespace lottie::document {

// Where properties are read: a layer's text and the tree made of it (or of a part).
struct ReadContext {
    const StoredLayer& layer;
    const JsonTree& tree;

    const FrameClock& clock() const { return layer.comp->store->clock; }
    host::model::Time key_time(const JsonNode& time) const;  // throws as fail()
    // Throws host::model::Error about a value in the tree.
    [[noreturn]] void fail(const JsonNode& at, const std::string& fault) const;
};

struct ParsedKey {
    host::model::Keyframe key;
    const JsonNode* node = nullptr;
    host::model::Time file_time;  // of the composition; keys at one time are a tick apart in `key`
};

struct ParsedProperty {
    const JsonNode* node = nullptr;
    const JsonNode* value = nullptr;       // its `k`, null if missing
    const JsonNode* expression = nullptr;  // its `x`, null if missing
    bool is_in_order = true;               // the keys stand in the order of their times
    bool is_in_slot = false;               // all but `node` is the slot's that the property names, not its own
    std::vector<ParsedKey> keys;           // ascending
    host::model::Value static_value;
    std::string expression_text;

    bool is_still() const { return keys.empty() && expression_text.empty(); }
    std::shared_ptr<const host::model::StreamData> data() const;
};

// A number the file lacks in a value is the default's. Values of layer parameters become layer ids.
ParsedProperty parse_property(const ReadContext& context, const JsonNode& node, host::model::StreamType type,
                              const host::model::Value& missing);

}  // namespace lottie::document
