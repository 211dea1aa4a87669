// The index of effect parameters that name layers.
#include "layers/layer_parameter_index.h"

#include <algorithm>

namespace host::model {
namespace {

std::vector<LayerId> layers_in(const StreamData& data) {
    std::vector<LayerId> ids;
    const auto add = [&ids](const Value& value) {
        if (const LayerId id = layer_named_by(value)) ids.push_back(id);
    };
    add(data.static_value);
    for (const Keyframe& keyframe : data.keyframes) add(keyframe.value);
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
}

}  // namespace

void LayerParameterIndex::forget(Stream& stream) {
    const auto known = named_by_.find(&stream);
    if (known == named_by_.end()) return;
    for (const LayerId id : known->second) users_of_[id].erase(&stream);
    named_by_.erase(known);
}

void LayerParameterIndex::touch(Stream& stream) {
    forget(stream);
    auto ids = layers_in(stream.data());
    if (ids.empty()) return;
    for (const LayerId id : ids) users_of_[id].insert(&stream);
    named_by_.emplace(&stream, std::move(ids));
}

std::vector<Stream*> LayerParameterIndex::streams_naming(LayerId id) const {
    std::vector<Stream*> found;
    const auto users = users_of_.find(id);
    if (users == users_of_.end()) return found;
    for (Stream* stream : users->second) {
        if (stream->owner().is_alive()) found.push_back(stream);
    }
    return found;
}

}  // namespace host::model
