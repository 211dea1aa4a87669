// Which member of a stream value's union a journal tells.
#include "value_member.h"

#include <algorithm>

namespace host::journal {

ValueMember member_of(const JournalValue& value) {
    const auto has = [&value](const char* field) {
        return std::any_of(value.parts.begin(), value.parts.end(),
                           [field](const JournalValue& part) { return part.field == field; });
    };
    if (has("z")) return ValueMember::three_d;
    if (has("x")) return ValueMember::two_d;
    if (has("one_d")) return ValueMember::one_d;
    if (has("color")) return ValueMember::color;
    if (has("layer_id")) return ValueMember::layer_id;
    if (has("mask_id")) return ValueMember::mask_id;
    return ValueMember::none;
}

}  // namespace host::journal
