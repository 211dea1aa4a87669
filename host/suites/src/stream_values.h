// Values that plug-ins hand in, checked against the stream they are for.
#pragma once

#include "held.h"
#include "host_state.h"
#include "values.h"

namespace host::suites {

// Streams without numbers give empty values and take any, or refuse both if the rules are strict.
void require_values(const HostState& host, const model::Stream& stream);

// The numbers of `value` for `stream`. The record may have been filled by hand; one that the host filled must not have
// been disposed of and must come from a stream whose values look the same. Throws bad_argument.
model::Value value_for(HostState& host, const model::Stream& stream, const AEGP_StreamValue2& value);

}  // namespace host::suites
