// Shared data of streams without keyframes.
#include "streams/still_data.h"

#include <cstdint>

#include "base/bits.h"

namespace host::model {
namespace {

using Bits = std::array<std::uint64_t, 4>;

Bits bits_of(const Value& value) {
    return base::bit_cast<Bits>(value.n);
}

// Below 64.
std::size_t hash_of(const Bits& bits) {
    std::uint64_t hash = 0;
    for (const std::uint64_t word : bits) hash = (hash ^ word) * 0x9e3779b97f4a7c15;
    return hash >> 58;
}

}  // namespace

std::shared_ptr<const StreamData> StillData::of(const Value& value) {
    const Bits bits = bits_of(value);
    auto& last = last_[hash_of(bits)];
    if (last == nullptr || bits_of(last->static_value) != bits) {
        auto data = std::make_shared<StreamData>();
        data->static_value = value;
        last = std::move(data);
    }
    return last;
}

}  // namespace host::model
