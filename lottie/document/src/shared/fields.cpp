// Finding a layer's member by its key.
#include "shared/fields.h"

#include <algorithm>

#include "document/layer_members.h"

namespace lottie::document {
namespace {

constexpr std::size_t kPacked = 8;

// Keys of up to eight bytes as one number, so that finding one is a run over integers.
constexpr std::uint64_t pack(std::string_view key) {
    std::uint64_t packed = 0;
    for (const char c : key) packed = packed << 8 | static_cast<unsigned char>(c);
    return packed;
}

constexpr std::array<std::uint64_t, kFieldCount> make_packed_keys() {
    std::array<std::uint64_t, kFieldCount> keys{};
    for (std::size_t i = 0; i < kFieldCount; ++i) {
        if (kFieldRules[i].key.size() <= kPacked) keys[i] = pack(kFieldRules[i].key);
    }
    return keys;
}

constexpr std::array<std::uint64_t, kFieldCount> kPackedKeys = make_packed_keys();

constexpr std::array<std::string_view, kFieldCount> kOrder = [] {
    std::array<std::string_view, kFieldCount> order;
    for (std::size_t i = 0; i < kFieldCount; ++i) order[i] = kFieldRules[i].key;
    return order;
}();

}  // namespace

Field field_of(std::string_view key) {
    if (key.size() > kPacked) return key == key_of(Field::masks) ? Field::masks : Field::count;
    if (key.empty() || key.front() == '\0') return Field::count;
    const auto found = std::find(kPackedKeys.begin(), kPackedKeys.end(), pack(key));
    return static_cast<Field>(found - kPackedKeys.begin());
}

std::string_view phrase(Expect expect) {
    switch (expect) {
        case Expect::number:
            return "a number";
        case Expect::integer:
            return "a whole number";
        case Expect::flag:
            return "true, false, 0 or 1";
        case Expect::string:
            return "text in quotes";
        case Expect::object:
            return "an object";
        case Expect::array:
            return "an array";
        case Expect::anything:
            break;
    }
    return "any value";
}

std::span<const std::string_view> layer_member_order() {
    return kOrder;
}

}  // namespace lottie::document
