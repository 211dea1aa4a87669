// Adding many keyframes at once: the bodies of the keyframe suite's batch functions.
#pragma once

#include "held.h"
#include "host_state.h"
#include "take.h"

namespace host::suites {

// A position whose dimensions are separated keeps its keyframes in the followers; true unless the rules let it have its
// own.
bool keeps_keys_in_followers(const HostState& host, const model::Stream& stream);
// Throws not_allowed for a stream that can have no keyframes of its own.
void require_keyframes_here(const HostState& host, const model::Stream& stream);

// Nothing changes before the end; adding at the end is one undo step. A time that was given no value gets the one the
// stream has there.
KeyframeBatch start_batch(HostState& host, StreamRef stream);
int add_to_batch(KeyframeBatch& batch, TimeMode mode, const A_Time& time);  // the place in the batch
void set_in_batch(HostState& host, KeyframeBatch& batch, A_long place, const AEGP_StreamValue2& value);
void end_batch(HostState& host, bool add, HandleOf<KeyframeBatch> handle);

}  // namespace host::suites
