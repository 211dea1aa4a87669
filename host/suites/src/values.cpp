// Which member of the union each stream type uses.
#include "values.h"

#include <cmath>
#include <cstring>

#include "model/error.h"
#include "numbers.h"

namespace host::suites {

using model::StreamType;

namespace {

enum class Layout { none, three, two, one, color, layer_id, mask_id };

Layout layout(StreamType type) {
    switch (type) {
        case StreamType::three_d_spatial:
        case StreamType::three_d:
            return Layout::three;
        case StreamType::two_d_spatial:
        case StreamType::two_d:
            return Layout::two;
        case StreamType::one_d:
            return Layout::one;
        case StreamType::color:
            return Layout::color;
        case StreamType::layer_id:
            return Layout::layer_id;
        case StreamType::mask_id:
            return Layout::mask_id;
        case StreamType::no_data:
        case StreamType::arbitrary:
        case StreamType::marker:
        case StreamType::mask:
        case StreamType::text_document:
            break;
    }
    return Layout::none;
}

}  // namespace

bool has_numbers(StreamType type) {
    return layout(type) != Layout::none;
}
bool have_same_layout(StreamType a, StreamType b) {
    return layout(a) == layout(b);
}

AEGP_StreamVal2 to_plugin(const model::Value& value, StreamType type) {
    const auto& n = value.n;
    AEGP_StreamVal2 out;
    std::memset(&out, 0, sizeof out);
    switch (layout(type)) {
        case Layout::three:
            out.three_d = {n[0], n[1], n[2]};
            break;
        case Layout::two:
            out.two_d = {n[0], n[1]};
            break;
        case Layout::one:
            out.one_d = n[0];
            break;
        case Layout::color:
            out.color = {n[3], n[0], n[1], n[2]};
            break;
        case Layout::layer_id:
            out.layer_id = static_cast<AEGP_LayerIDVal>(n[0]);
            break;
        case Layout::mask_id:
            out.mask_id = static_cast<AEGP_MaskIDVal>(n[0]);
            break;
        case Layout::none:
            break;
    }
    return out;
}

model::Value from_plugin(const AEGP_StreamVal2& value, StreamType type) {
    model::Value out;
    switch (layout(type)) {
        case Layout::three:
            out.n = {value.three_d.x, value.three_d.y, value.three_d.z, 0};
            break;
        case Layout::two:
            out.n = {value.two_d.x, value.two_d.y, 0, 0};
            break;
        case Layout::one:
            out.n = {value.one_d, 0, 0, 0};
            break;
        case Layout::color:
            out.n = {value.color.redF, value.color.greenF, value.color.blueF, value.color.alphaF};
            break;
        case Layout::layer_id:
            out.n = {static_cast<double>(value.layer_id), 0, 0, 0};
            break;
        case Layout::mask_id:
            out.n = {static_cast<double>(value.mask_id), 0, 0, 0};
            break;
        case Layout::none:
            break;
    }
    for (const double n : out.n)
        if (!std::isfinite(n)) throw model::Error(model::ErrorKind::bad_argument, "The value is not a finite number.");
    return out;
}

std::string describe(const AEGP_StreamVal2& value, StreamType type) {
    switch (layout(type)) {
        case Layout::three:
            return number_list({value.three_d.x, value.three_d.y, value.three_d.z});
        case Layout::two:
            return number_list({value.two_d.x, value.two_d.y});
        case Layout::one:
            return number_text(value.one_d);
        case Layout::color:
            return "rgba" + number_list({value.color.redF, value.color.greenF, value.color.blueF, value.color.alphaF});
        case Layout::layer_id:
            return "layer id " + std::to_string(value.layer_id);
        case Layout::mask_id:
            return "mask id " + std::to_string(value.mask_id);
        case Layout::none:
            break;
    }
    return "no data";
}

}  // namespace host::suites
