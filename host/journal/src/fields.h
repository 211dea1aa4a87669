// The fields of each record of the interface, from the interface's own list, for writing and for reading.
//
// A visitor is called with a field's name and the field; `record` is const when it is written.
#pragma once

#include <concepts>
#include <type_traits>

#include "AE_GeneralPlug.h"
#include "value_member.h"

namespace host::journal {

template <class Record, class T>
concept Is = std::same_as<std::remove_const_t<Record>, T>;

// Fields of packed records may lie where no reference can point: those are visited as copies.
#define RECORD(structure, size, alignment) \
    template <Is<structure> R>             \
    void visit_fields(auto& visit, R& record) {
#define FIELD(structure, member, offset, name)                     \
    if constexpr (alignof(decltype(record.member)) > alignof(R)) { \
        auto field = record.member;                                \
        visit(#name, field);                                       \
        if constexpr (!std::is_const_v<R>) record.member = field;  \
    } else {                                                       \
        visit(#name, record.member);                               \
    }
#define FIELD_IF(structure, member, offset, name, held) \
    if (record.type == held) visit(#name, record.member);
#define RECORD_END(structure) }
#include "records.def"

// The member of a stream's value that holds.
template <Is<AEGP_StreamVal2> R>
void visit_member(auto& visit, R& value, ValueMember member) {
    switch (member) {
        case ValueMember::none:
            break;
        case ValueMember::one_d:
            visit("one_d", value.one_d);
            break;
        case ValueMember::two_d:
            visit_fields(visit, value.two_d);
            break;
        case ValueMember::three_d:
            visit_fields(visit, value.three_d);
            break;
        case ValueMember::color:
            visit("color", value.color);
            break;
        case ValueMember::layer_id:
            visit("layer_id", value.layer_id);
            break;
        case ValueMember::mask_id:
            visit("mask_id", value.mask_id);
            break;
    }
}

}  // namespace host::journal
