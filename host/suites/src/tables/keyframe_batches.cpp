// Batches of keyframes.
#include "tables/keyframe_batches.h"

#include <utility>
#include <vector>

#include "refusals.h"
#include "tables/stream_values.h"

namespace host::suites {

bool keeps_keys_in_followers(const HostState& host, const model::Stream& stream) {
    return stream.is_separated() &&
           host.project.rules().separated_position == model::SeparatedPosition::leader_has_no_keys;
}

void require_keyframes_here(const HostState& host, const model::Stream& stream) {
    if (!stream.can_vary_over_time()) refuse_state("The stream cannot vary over time.");
    if (keeps_keys_in_followers(host, stream))
        refuse_state("The dimensions are separated, so the stream itself has no keyframes.");
}

KeyframeBatch start_batch(HostState& host, StreamRef stream) {
    require_keyframes_here(host, *stream.stream);
    return {stream, {}};
}

namespace {

void require_stream(const KeyframeBatch& batch) {
    if (!still_exists(batch.stream)) refuse_argument("What the stream belongs to was deleted.");
}

}  // namespace

int add_to_batch(KeyframeBatch& batch, TimeMode mode, const A_Time& time) {
    require_stream(batch);
    batch.entries.push_back({to_stream_time(from_plugin(time), mode, *batch.stream.layer), {}});
    return static_cast<int>(batch.entries.size() - 1);
}

void set_in_batch(HostState& host, KeyframeBatch& batch, A_long place, const AEGP_StreamValue2& value) {
    require_stream(batch);
    if (place < 0 || static_cast<std::size_t>(place) >= batch.entries.size())
        refuse_argument("The batch has " + std::to_string(batch.entries.size()) + " keyframes, none at " +
                        std::to_string(place) + ".");
    batch.entries[static_cast<std::size_t>(place)].value = value_for(host, *batch.stream.stream, value);
}

void end_batch(HostState& host, bool add, HandleOf<KeyframeBatch> handle) {
    const KeyframeBatch batch = host.ledger.dispose<KeyframeBatch>(handle.handle);
    if (!add || batch.entries.empty()) return;
    require_stream(batch);
    const model::Stream& stream = *batch.stream.stream;
    std::vector<std::pair<model::Time, model::Value>> keyframes;
    keyframes.reserve(batch.entries.size());
    for (const KeyframeBatch::Pending& entry : batch.entries)
        keyframes.emplace_back(entry.time, entry.value ? *entry.value : stream.value_at(entry.time));
    batch.stream.stream->add_keyframes(keyframes);
}

}  // namespace host::suites
