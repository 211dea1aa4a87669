// The members of layers that reader and writer know, in the order in which exporters write them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lottie::document {

// What the value of a member must be. Null counts as missing.
enum class Expect : std::uint8_t { anything, number, integer, flag, string, object, array };

enum class Field : std::uint8_t {
    ddd,
    ind,
    ty,
    nm,
    cl,
    ln,
    parent,
    tt,
    tp,
    td,
    hd,
    ref_id,
    sr,
    ks,
    ao,
    has_mask,
    masks,
    ef,
    sy,
    tm,
    sw,
    sh,
    sc,
    w,
    h,
    shapes,
    t,
    au,
    pe,
    ip,
    op,
    st,
    ct,
    cp,
    mb,
    bm,
    count
};
inline constexpr std::size_t kFieldCount = static_cast<std::size_t>(Field::count);

struct FieldRule {
    std::string_view key;
    Expect expect;
};

inline constexpr std::array<FieldRule, kFieldCount> kFieldRules{{
    {"ddd", Expect::flag},
    {"ind", Expect::integer},
    {"ty", Expect::integer},
    {"nm", Expect::string},
    {"cl", Expect::anything},
    {"ln", Expect::anything},
    {"parent", Expect::integer},
    {"tt", Expect::integer},
    {"tp", Expect::integer},
    {"td", Expect::flag},
    {"hd", Expect::flag},
    {"refId", Expect::string},
    {"sr", Expect::number},
    {"ks", Expect::object},
    {"ao", Expect::flag},
    {"hasMask", Expect::anything},
    {"masksProperties", Expect::array},
    {"ef", Expect::array},
    {"sy", Expect::anything},
    {"tm", Expect::object},
    {"sw", Expect::number},
    {"sh", Expect::number},
    {"sc", Expect::string},
    {"w", Expect::number},
    {"h", Expect::number},
    {"shapes", Expect::array},
    {"t", Expect::anything},
    {"au", Expect::object},
    {"pe", Expect::object},
    {"ip", Expect::number},
    {"op", Expect::number},
    {"st", Expect::number},
    {"ct", Expect::flag},
    {"cp", Expect::flag},
    {"mb", Expect::flag},
    {"bm", Expect::anything},
}};

constexpr std::size_t index_of(Field field) {
    return static_cast<std::size_t>(field);
}
constexpr std::string_view key_of(Field field) {
    return kFieldRules[index_of(field)].key;
}

// Field::count for a key that is none of ours.
Field field_of(std::string_view key);

// "a number", "text", ...
std::string_view phrase(Expect expect);

}  // namespace lottie::document
