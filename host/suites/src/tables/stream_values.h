// Checks values from plug-ins against the stream they are for.
#pragma once

#include "handles/held.h"
#include "host_state.h"
#include "values.h"

namespace host::suites {

// Throws not_allowed for a stream without numbers if the rules are strict; else such streams return empty values and
// ignore new ones.
void require_values(const HostState& host, const model::Stream& stream);

// The numbers of `value` for `stream`. A record that the host filled must not have been disposed of and must come from
// a stream with the same layout of values. Throws bad_argument.
model::Value value_for(HostState& host, const model::Stream& stream, const AEGP_StreamValue2& value);

}  // namespace host::suites
