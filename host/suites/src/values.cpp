// Converts stream values.
#include "values.h"

#include <cmath>
#include <cstring>

#include "model/error.h"
#include "numbers.h"
#include "suites/value_member.h"

namespace host::suites {

using model::StreamType;

namespace {

ValueMember member_of(StreamType type) {
    return value_member(static_cast<AEGP_StreamType>(type));
}

}  // namespace

bool has_numbers(StreamType type) {
    return member_of(type) != ValueMember::none;
}
bool have_same_layout(StreamType a, StreamType b) {
    return member_of(a) == member_of(b);
}

AEGP_StreamVal2 to_plugin(const model::Value& value, StreamType type) {
    const auto& n = value.n;
    AEGP_StreamVal2 out;
    std::memset(&out, 0, sizeof out);
    switch (member_of(type)) {
        case ValueMember::three_d:
            out.three_d = {n[0], n[1], n[2]};
            break;
        case ValueMember::two_d:
            out.two_d = {n[0], n[1]};
            break;
        case ValueMember::one_d:
            out.one_d = n[0];
            break;
        case ValueMember::color:
            out.color = {n[3], n[0], n[1], n[2]};
            break;
        case ValueMember::layer_id:
            out.layer_id = static_cast<AEGP_LayerIDVal>(n[0]);
            break;
        case ValueMember::mask_id:
            out.mask_id = static_cast<AEGP_MaskIDVal>(n[0]);
            break;
        case ValueMember::none:
            break;
    }
    return out;
}

model::Value from_plugin(const AEGP_StreamVal2& value, StreamType type) {
    model::Value out;
    switch (member_of(type)) {
        case ValueMember::three_d:
            out.n = {value.three_d.x, value.three_d.y, value.three_d.z, 0};
            break;
        case ValueMember::two_d:
            out.n = {value.two_d.x, value.two_d.y, 0, 0};
            break;
        case ValueMember::one_d:
            out.n = {value.one_d, 0, 0, 0};
            break;
        case ValueMember::color:
            out.n = {value.color.redF, value.color.greenF, value.color.blueF, value.color.alphaF};
            break;
        case ValueMember::layer_id:
            out.n = {static_cast<double>(value.layer_id), 0, 0, 0};
            break;
        case ValueMember::mask_id:
            out.n = {static_cast<double>(value.mask_id), 0, 0, 0};
            break;
        case ValueMember::none:
            break;
    }
    for (const double n : out.n)
        if (!std::isfinite(n)) throw model::Error(model::ErrorKind::bad_argument, "The value is not a finite number.");
    return out;
}

std::string describe(const AEGP_StreamVal2& value, StreamType type) {
    switch (member_of(type)) {
        case ValueMember::three_d:
            return number_list({value.three_d.x, value.three_d.y, value.three_d.z});
        case ValueMember::two_d:
            return number_list({value.two_d.x, value.two_d.y});
        case ValueMember::one_d:
            return base::shortest_text(value.one_d);
        case ValueMember::color:
            return "rgba" + number_list({value.color.redF, value.color.greenF, value.color.blueF, value.color.alphaF});
        case ValueMember::layer_id:
            return "layer id " + std::to_string(value.layer_id);
        case ValueMember::mask_id:
            return "mask id " + std::to_string(value.mask_id);
        case ValueMember::none:
            break;
    }
    return "no data";
}

}  // namespace host::suites
