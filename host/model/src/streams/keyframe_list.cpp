// The keyframes of a stream, packed: time, flags, value, eases, tangents.
#include "model/keyframe_list.h"

#include <algorithm>

#include "base/bits.h"

namespace host::model {
namespace {

using Word = std::uint64_t;

// Bitwise, so that negative zero is kept.
bool is_default(double number, double value) {
    return base::bit_cast<Word>(number) == base::bit_cast<Word>(value);
}

bool is_default(const Ease& ease) {
    return is_default(ease.speed, Ease{}.speed) && is_default(ease.influence, Ease{}.influence);
}

// The number of elements up to the last that is not the default.
std::uint8_t count_of(const Value& value) {
    std::size_t count = value.n.size();
    while (count > 0 && is_default(value.n[count - 1], 0)) --count;
    return static_cast<std::uint8_t>(count);
}

std::uint8_t count_of(const std::array<Ease, 3>& eases) {
    std::size_t count = eases.size();
    while (count > 0 && is_default(eases[count - 1])) --count;
    return static_cast<std::uint8_t>(count);
}

// Interpolations in two bits each, flags above.
Word packed_flags(const Keyframe& keyframe) {
    return static_cast<Word>(keyframe.in) | static_cast<Word>(keyframe.out) << 2 | Word{keyframe.flags} << 4;
}

// Visits the numbers that a list of this shape stores, in order.
template <class Shape, class AnyKeyframe, class Visit>
void visit_numbers(const Shape& shape, AnyKeyframe& keyframe, Visit visit) {
    for (std::size_t i = 0; i < shape.values; ++i) visit(keyframe.value.n[i]);
    for (std::size_t i = 0; i < shape.eases; ++i) {
        visit(keyframe.ease_in[i].speed);
        visit(keyframe.ease_in[i].influence);
        visit(keyframe.ease_out[i].speed);
        visit(keyframe.ease_out[i].influence);
    }
    for (std::size_t i = 0; i < shape.tangents; ++i) {
        visit(keyframe.tangent_in.n[i]);
        visit(keyframe.tangent_out.n[i]);
    }
}

}  // namespace

KeyframeList::Shape KeyframeList::shape_of(const Keyframe& keyframe) {
    return {count_of(keyframe.value), std::max(count_of(keyframe.ease_in), count_of(keyframe.ease_out)),
            std::max(count_of(keyframe.tangent_in), count_of(keyframe.tangent_out))};
}

KeyframeList::Shape KeyframeList::joined(const Shape& a, const Shape& b) {
    return {std::max(a.values, b.values), std::max(a.eases, b.eases), std::max(a.tangents, b.tangents)};
}

KeyframeList::KeyframeList(const std::vector<Keyframe>& keyframes)
    : size_(static_cast<std::uint32_t>(keyframes.size())) {
    for (const Keyframe& keyframe : keyframes) shape_ = joined(shape_, shape_of(keyframe));
    words_.resize(size_ * shape_.words());
    for (std::size_t i = 0; i < size_; ++i) pack(keyframes[i], at(i));
}

void KeyframeList::pack(const Keyframe& keyframe, Word* to) const {
    *to++ = static_cast<Word>(keyframe.time.ticks);
    *to++ = packed_flags(keyframe);
    visit_numbers(shape_, keyframe, [&to](double number) { *to++ = base::bit_cast<Word>(number); });
}

Keyframe KeyframeList::operator[](std::size_t index) const {
    const Word* from = at(index);
    Keyframe keyframe;
    keyframe.time.ticks = static_cast<std::int64_t>(*from++);
    const Word flags = *from++;
    keyframe.in = static_cast<Interpolation>(flags & 3);
    keyframe.out = static_cast<Interpolation>(flags >> 2 & 3);
    keyframe.flags = static_cast<std::uint32_t>(flags >> 4);
    visit_numbers(shape_, keyframe, [&from](double& number) { number = base::bit_cast<double>(*from++); });
    return keyframe;
}

Time KeyframeList::time(std::size_t index) const {
    return {static_cast<std::int64_t>(*at(index))};
}

std::size_t KeyframeList::count_before(Time t) const {
    std::size_t first = 0;
    std::size_t last = size_;
    while (first < last) {
        const std::size_t middle = first + (last - first) / 2;
        if (time(middle) < t) {
            first = middle + 1;
        } else {
            last = middle;
        }
    }
    return first;
}

void KeyframeList::make_room_for(const Keyframe& keyframe) {
    const Shape shape = joined(shape_, shape_of(keyframe));
    if (shape == shape_) return;
    const std::vector<Keyframe> all = to_vector();
    shape_ = shape;
    words_.assign(size_ * shape_.words(), 0);
    for (std::size_t i = 0; i < size_; ++i) pack(all[i], at(i));
}

void KeyframeList::set(std::size_t index, const Keyframe& keyframe) {
    make_room_for(keyframe);
    pack(keyframe, at(index));
}

void KeyframeList::insert(std::size_t index, const Keyframe& keyframe) {
    make_room_for(keyframe);
    const std::size_t words = shape_.words();
    // Grows by less than doubling, since most lists stay short.
    if (words_.capacity() < words_.size() + words) words_.reserve(words_.size() + std::max(words, words_.size() / 4));
    words_.insert(words_.begin() + static_cast<std::ptrdiff_t>(index * words), words, 0);
    ++size_;
    pack(keyframe, at(index));
}

bool operator==(const KeyframeList& a, const KeyframeList& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
}

}  // namespace host::model
