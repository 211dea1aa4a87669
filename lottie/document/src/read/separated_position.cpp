// Positions whose dimensions are animated apart, as one spatial property.
#include "read/separated_position.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>

#include "model/layer.h"
#include "shared/ease.h"
#include "shared/stream_places.h"

namespace lottie::document {
namespace {

using host::model::Interpolation;
using host::model::Keyframe;
using host::model::StreamData;
using host::model::StreamType;
using host::model::Time;

// Beyond that many frames the samples stand further apart.
constexpr double kMaxSamples = 20'000;

using ReadDimensions = std::array<std::shared_ptr<const StreamData>, 3>;

// The shape of an easing, apart from how far it moves.
bool have_same_shape(const StreamData& a, const StreamData& b) {
    if (a.keyframes.size() != b.keyframes.size()) return false;
    for (std::size_t i = 0; i < a.keyframes.size(); ++i) {
        const Keyframe one = a.keyframes[i];
        const Keyframe other = b.keyframes[i];
        if (one.time != other.time || one.out != other.out) return false;
        if (i + 1 == a.keyframes.size() || one.out == Interpolation::hold) continue;
        const auto shape = [](const Keyframe& from, const Keyframe& to) {
            const SegmentMeasure segment = measure(StreamType::one_d, 0, from, to);
            return std::array{handle_out(from.ease_out[0], from.out, segment),
                              handle_in(to.ease_in[0], to.in, segment)};
        };
        const auto first = shape(one, a.keyframes[i + 1]);
        const auto second = shape(other, b.keyframes[i + 1]);
        for (std::size_t side = 0; side < 2; ++side) {
            if (first[side].x != second[side].x || first[side].y != second[side].y) return false;
        }
    }
    return true;
}

// Keyframes of the dimension `lead`, moved along all of them: straight segments with the lead's eases.
std::vector<Keyframe> combine(const ReadDimensions& dimensions, const StreamData& lead) {
    std::vector<Keyframe> keyframes = lead.keyframes.to_vector();
    for (std::size_t i = 0; i < keyframes.size(); ++i) {
        for (std::size_t d = 0; d < dimensions.size(); ++d) {
            const StreamData& data = *dimensions[d];
            keyframes[i].value.n[d] = data.keyframes.empty() ? data.static_value.n[0] : data.keyframes[i].value.n[0];
        }
    }
    for (std::size_t i = 0; i + 1 < keyframes.size(); ++i) {
        const SegmentMeasure own = measure(StreamType::one_d, 0, lead.keyframes[i], lead.keyframes[i + 1]);
        const SegmentMeasure all = measure(StreamType::three_d_spatial, 0, keyframes[i], keyframes[i + 1]);
        keyframes[i].ease_out[0].speed *= all.change / own.change;
        keyframes[i + 1].ease_in[0].speed *= all.change / own.change;
    }
    return keyframes;
}

std::vector<Keyframe> bake(const ReadDimensions& dimensions, const FrameClock& clock, Time offset,
                           host::model::Layer& layer) {
    std::set<Time> times;
    for (const auto& data : dimensions) {
        for (const Keyframe& key : data->keyframes) times.insert(key.time);
    }
    const double first = std::ceil(clock.frames(*times.begin() + offset));
    const double last = std::floor(clock.frames(*times.rbegin() + offset));
    const double step = std::max(1.0, std::ceil((last - first) / kMaxSamples));
    for (double frame = first; frame <= last; frame += step) times.insert(clock.clamped_time(frame) - offset);

    std::vector<Keyframe> keyframes;
    keyframes.reserve(times.size());
    for (const Time time : times) keyframes.emplace_back().time = time;
    for (std::size_t d = 0; d < dimensions.size(); ++d) {
        const host::model::Stream sampler(layer, StreamType::one_d, std::string(kDimensionKeys[d]), dimensions[d]);
        for (Keyframe& key : keyframes) key.value.n[d] = sampler.value_at(key.time).n[0];
    }
    return keyframes;
}

}  // namespace

std::shared_ptr<const StreamData> read_separated_position(const ReadContext& context, const JsonNode& position,
                                                          host::model::Layer& layer) {
    ReadDimensions dimensions;
    const StreamData* lead = nullptr;
    bool agree = true;
    for (std::size_t d = 0; d < dimensions.size(); ++d) {
        const JsonNode* node = context.tree.member(&position, kDimensionKeys[d]);
        dimensions[d] = node == nullptr ? std::make_shared<StreamData>()
                                        : parse_property(context, *node, StreamType::one_d, {}).data();
        if (dimensions[d]->keyframes.empty()) continue;
        if (lead == nullptr) lead = dimensions[d].get();
        agree = agree && have_same_shape(*lead, *dimensions[d]);
    }
    auto data = std::make_shared<StreamData>();
    for (std::size_t d = 0; d < dimensions.size(); ++d) data->static_value.n[d] = dimensions[d]->static_value.n[0];
    if (lead != nullptr) {
        data->keyframes =
            agree ? combine(dimensions, *lead) : bake(dimensions, context.clock(), context.layer.offset, layer);
    }
    return data;
}

}  // namespace lottie::document
