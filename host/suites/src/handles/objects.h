// From handles to live model objects, and back.
#pragma once

#include <string>

#include "handles/handle.h"
#include "host_state.h"

namespace host::suites {

// All throw model::Error bad_argument for a handle that is null, foreign, of another kind or dead.
model::Project& living_project(HostState& host, AEGP_ProjectH handle);
model::Item& living_item(HostState& host, AEGP_ItemH handle);
model::Comp& living_comp(HostState& host, AEGP_CompH handle);
model::Layer& living_layer(HostState& host, AEGP_LayerH handle);
StreamRef living_stream(HostState& host, AEGP_StreamRefH handle);
EffectRef living_effect(HostState& host, AEGP_EffectRefH handle);

// The handle of one of the host's own objects contains the object's id.
template <class Handle>
Handle handle_with_id(const HostState& host, std::int32_t id) {
    return as_pointer<Handle>(encode({kind_of<Handle>, static_cast<std::uint32_t>(id), 0, host.number}));
}
inline AEGP_ProjectH handle_of(const HostState& host, const model::Project&) {
    return handle_with_id<AEGP_ProjectH>(host, 0);
}
inline AEGP_ItemH handle_of(const HostState& host, const model::Item& item) {
    return handle_with_id<AEGP_ItemH>(host, item.id());
}
inline AEGP_CompH comp_handle_of(const HostState& host, const model::Comp& comp) {
    return handle_with_id<AEGP_CompH>(host, comp.id());
}
inline AEGP_LayerH handle_of(const HostState& host, const model::Layer& layer) {
    return handle_with_id<AEGP_LayerH>(host, layer.id());
}

// Any handle in words: layer 12 "Sky", stream 4 ("Position" of layer 12), null. Never throws.
std::string describe(const HostState& host, RawHandle handle);

}  // namespace host::suites
