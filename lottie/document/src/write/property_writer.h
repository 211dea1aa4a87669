// Properties as the file spells them: new ones, and changes to those it has.
#pragma once

#include <cstddef>
#include <string>

#include "document/patch.h"
#include "model/stream.h"
#include "read/property_reader.h"
#include "write/write_context.h"

namespace lottie::document {

// What a stream has become, and where its layer stands in time now.
struct CurrentStream {
    host::model::StreamType type;
    const host::model::StreamData& data;
    host::model::Time offset;
    host::model::Value missing;     // what numbers that the file lacks stand for
    std::size_t least_numbers = 0;  // that a value must have
};

// `l` is written when it is not 0: how many of the numbers count.
std::string property_text(const WriteContext& context, const CurrentStream& now, int ix, int l);

// Edits the property at `node`; bytes of what is the same stay.
void edit_property(Patch& patch, const WriteContext& context, const ReadContext& base, const JsonNode& node,
                   const CurrentStream& now);

bool is_same(const host::model::StreamData& a, const host::model::StreamData& b);

// Edits the expression alone.
void edit_expression(Patch& patch, const JsonTree& tree, const JsonNode& property, const host::model::StreamData& data);

}  // namespace lottie::document
