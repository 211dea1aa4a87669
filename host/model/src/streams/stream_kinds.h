// What each layer stream number stands for.
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

// The one data that all untouched streams of this number share.
const std::shared_ptr<const StreamData>& default_stream_data(int number);

bool is_stream_legal_for(int number, const Layer& layer);

}  // namespace host::model
