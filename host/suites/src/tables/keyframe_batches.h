// Adding many keyframes at once: the bodies of the keyframe suite's batch functions.
#pragma once

#include "calls/take.h"
#include "handles/held.h"
#include "host_state.h"

namespace host::suites {

// Whether the stream is a position with separated dimensions, whose followers have the keyframes. The rules may let it
// have its own.
bool keeps_keys_in_followers(const HostState& host, const model::Stream& stream);
// Throws not_allowed for a stream that cannot have keyframes of its own.
void require_keyframes_here(const HostState& host, const model::Stream& stream);

// Nothing changes before the end, which is one undo step. A keyframe without a value gets the stream's value at its
// time.
KeyframeBatch start_batch(HostState& host, StreamRef stream);
int add_to_batch(KeyframeBatch& batch, TimeMode mode, const A_Time& time);  // the place in the batch
void set_in_batch(HostState& host, KeyframeBatch& batch, A_long place, const AEGP_StreamValue2& value);
void end_batch(HostState& host, bool add, HandleOf<KeyframeBatch> handle);

}  // namespace host::suites
