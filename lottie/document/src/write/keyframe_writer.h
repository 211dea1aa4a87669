// Keyframes as the file spells them.
#pragma once

#include <string>

#include "document/patch.h"
#include "read/property_reader.h"
#include "write/property_writer.h"
#include "write/write_context.h"

namespace lottie::document {

// The array of all keyframes, at least two.
std::string keyframes_text(const WriteContext& context, const CurrentStream& now, std::size_t numbers);

// Edits the array of a property that has keyframes in the file; there are at least two now.
void edit_keyframes(Patch& patch, const WriteContext& context, const ReadContext& base, const ParsedProperty& property,
                    const CurrentStream& now, std::size_t numbers);

// The numbers of a value; those that equal what `spelled` says at their place keep their spelling.
std::string value_text(const WriteContext& context, host::model::StreamType type, const host::model::Value& value,
                       std::size_t numbers, const JsonTree* tree = nullptr, const JsonNode* spelled = nullptr);
// Whether the node spells that value.
bool is_spelled(const WriteContext& context, host::model::StreamType type, const host::model::Value& value,
                std::size_t numbers, const JsonTree& tree, const JsonNode& node);

}  // namespace lottie::document
