// The interface's records as text.
#include "calls/argument_text.h"

#include <optional>

#include "values.h"

namespace host::suites {

namespace {

// The type of the stream that a value came from, if the stream still exists.
std::optional<model::StreamType> type_of(const HostState& host, AEGP_StreamRefH handle) {
    const StreamRef* ref = host.ledger.stream_behind(raw(handle));
    return ref && still_exists(*ref) ? std::optional(ref->stream->type()) : std::nullopt;
}

}  // namespace

std::string show(const HostState&, const A_Time& time) {
    return std::to_string(time.value) + "/" + std::to_string(time.scale);
}

std::string show(const HostState&, const A_Ratio& ratio) {
    return std::to_string(ratio.num) + ":" + std::to_string(ratio.den);
}

std::string show(const HostState&, const AEGP_ColorVal& color) {
    return "rgba" + number_list({color.redF, color.greenF, color.blueF, color.alphaF});
}

std::string show(const HostState& host, const AEGP_StreamValue2& value) {
    if (const auto type = type_of(host, value.streamH)) return describe(value.val, *type);
    return value.streamH ? "value of " + describe(host, raw(value.streamH)) : "value of no stream";
}

std::string show(const HostState&, const AEGP_KeyframeEase& ease) {
    return "speed " + base::shortest_text(ease.speedF) + " influence " + base::shortest_text(ease.influenceF);
}

std::string show(const HostState& host, const AEGP_CollectionItemV2& item) {
    switch (item.type) {
        case AEGP_CollectionItemType_LAYER:
            return describe(host, raw(item.u.layer.layerH));
        case AEGP_CollectionItemType_STREAMREF:
            return describe(host, raw(item.stream_refH));
        default:
            return "member of type " + std::to_string(item.type);
    }
}

std::string show(const HostState& host, const AEGP_FootageInterp& interpretation) {
    return "pixel aspect " + show(host, interpretation.pix_aspect_ratio);
}

}  // namespace host::suites
