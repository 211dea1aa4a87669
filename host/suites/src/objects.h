// From handles to the model's living objects, and back.
#pragma once

#include <string>

#include "handle.h"
#include "host_state.h"

namespace host::suites {

// All throw model::Error bad_argument, with a sentence, for a handle that is null, foreign, of another kind or dead.
model::Project& living_project(HostState& host, AEGP_ProjectH handle);
model::Item& living_item(HostState& host, AEGP_ItemH handle);
model::Comp& living_comp(HostState& host, AEGP_CompH handle);
model::Layer& living_layer(HostState& host, AEGP_LayerH handle);
StreamRef living_stream(HostState& host, AEGP_StreamRefH handle);
EffectRef living_effect(HostState& host, AEGP_EffectRefH handle);

AEGP_ProjectH handle_of(const HostState& host, const model::Project& project);
AEGP_ItemH handle_of(const HostState& host, const model::Item& item);
AEGP_CompH comp_handle_of(const HostState& host, const model::Comp& comp);
AEGP_LayerH handle_of(const HostState& host, const model::Layer& layer);

// Words for any handle: layer 12 "Sky", stream 4 ("Position" of layer 12), null. Never throws for a bad one.
std::string describe(const HostState& host, RawHandle handle);

}  // namespace host::suites
