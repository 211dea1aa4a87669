// Which effect parameters name which layers, so that a deletion finds them without a search.
#pragma once

#include <limits>
#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

#include "model/layer.h"
#include "streams/stream_order.h"

namespace host::model {

class LayerParameterIndex {
  public:
    LayerParameterIndex() = default;
    LayerParameterIndex(const LayerParameterIndex&) = delete;

    void touch(Stream& stream);  // an attached stream of the layer-id type, new or changed
    void forget(Stream& stream);
    // Parameters of live layers that name the layer at any time; not those that are not loaded.
    std::vector<Stream*> streams_naming(LayerId id) const;

  private:
    std::unordered_map<Stream*, std::vector<LayerId>> named_by_;
    std::unordered_map<LayerId, std::set<Stream*, StreamOrder>> users_of_;
};

// The layer that a parameter's value names; 0 for none. Files may contain any number.
inline LayerId layer_named_by(const Value& value) {
    const double id = value.n[0];
    return id >= 1 && id <= std::numeric_limits<LayerId>::max() ? static_cast<LayerId>(id) : 0;
}

// Maps all layer ids in the data; returns the same data if none changes.
template <class Map>
std::shared_ptr<const StreamData> with_mapped_layers(const std::shared_ptr<const StreamData>& data, Map map) {
    auto mapped = std::make_shared<StreamData>(*data);
    bool changed = false;
    const auto apply = [&](Value& value) {
        const LayerId old = layer_named_by(value);
        const LayerId next = old != 0 ? map(old) : 0;
        if (next == old) return;
        changed = true;
        value.n[0] = next;
    };
    apply(mapped->static_value);
    mapped->keyframes.for_each([&apply](Keyframe& keyframe) { apply(keyframe.value); });
    return changed ? mapped : data;
}

}  // namespace host::model
