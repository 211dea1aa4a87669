// The layer streams by number.
#pragma once

#include <memory>

#include "model/layer.h"
#include "model/stream.h"

namespace host::model {

struct StreamKind {
    const char* name;
    StreamType type;
    Value default_value = {};
};

// 0 <= number < kLayerStreamCount
const StreamKind& stream_kind(int number);

// Default data, shared by all untouched streams of this number.
const std::shared_ptr<const StreamData>& default_stream_data(int number);

bool is_stream_legal_for(int number, const Layer& layer);

}  // namespace host::model
