// Checks values from plug-ins.
#include "tables/stream_values.h"

#include "handles/objects.h"
#include "refusals.h"

namespace host::suites {

void require_values(const HostState& host, const model::Stream& stream) {
    if (host.project.rules().strict_no_data && !has_numbers(stream.type())) refuse_state("The stream has no values.");
}

model::Value value_for(HostState& host, const model::Stream& stream, const AEGP_StreamValue2& value) {
    if (value.streamH) {
        const StreamRef source = living_stream(host, value.streamH);
        if (!have_same_layout(source.stream->type(), stream.type()))
            refuse_argument("The value is of another type than the stream's.");
    }
    return from_plugin(value.val, stream.type());
}

}  // namespace host::suites
