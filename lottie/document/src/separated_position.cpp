// Positions whose dimensions are animated apart, as one spatial property.
#include "separated_position.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>

#include "ease.h"
#include "model/layer.h"

namespace lottie::document {
namespace {

using host::model::Interpolation;
using host::model::Keyframe;
using host::model::StreamData;
using host::model::StreamType;
using host::model::Time;

// Beyond that many frames the samples stand further apart.
constexpr double kMostSamples = 20'000;

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
        keyframes[i].ease_out[0].speed *= all.way / own.way;
        keyframes[i + 1].ease_in[0].speed *= all.way / own.way;
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
    const double step = std::max(1.0, std::ceil((last - first) / kMostSamples));
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

bool is_separated(const Tree& tree, const Tree::Node* position) {
    const Tree::Node* mark = tree.member(position, "s");
    const Tree::Node* x = tree.member(position, "x");
    return mark != nullptr && (mark->kind == Kind::yes || mark->kind == Kind::number) && x != nullptr &&
           x->kind == Kind::object;
}

std::shared_ptr<const StreamData> read_separated_position(const ReadContext& context, const Tree::Node& position,
                                                          host::model::Layer& layer) {
    ReadDimensions dimensions;
    const StreamData* lead = nullptr;
    bool agree = true;
    for (std::size_t d = 0; d < dimensions.size(); ++d) {
        const Tree::Node* node = context.tree.member(&position, kDimensionKeys[d]);
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

bool has_expressions(const Tree& tree, const Tree::Node& position) {
    return std::any_of(kDimensionKeys.begin(), kDimensionKeys.end(), [&](std::string_view key) {
        const Tree::Node* expression = tree.member(tree.member(&position, key), "x");
        return expression != nullptr && expression->kind == Kind::string;
    });
}

bool has_tangents(const StreamData& position) {
    return std::any_of(position.keyframes.begin(), position.keyframes.end(), [](const Keyframe& key) {
        return key.tangent_in != host::model::Value{} || key.tangent_out != host::model::Value{};
    });
}

Dimensions separate(const StreamData& position) {
    Dimensions dimensions;
    const std::vector<Keyframe> all = position.keyframes.to_vector();
    for (std::size_t d = 0; d < dimensions.size(); ++d) {
        StreamData& data = dimensions[d];
        data.static_value.n[0] = all.empty() ? position.static_value.n[d] : all.front().value.n[d];
        const bool moves = std::any_of(all.begin(), all.end(),
                                       [&](const Keyframe& key) { return key.value.n[d] != data.static_value.n[0]; });
        if (!moves) continue;
        std::vector<Keyframe> own = all;
        for (Keyframe& key : own) key.value = {{key.value.n[d], 0, 0, 0}};
        for (std::size_t i = 0; i + 1 < all.size(); ++i) {
            const double share = measure(StreamType::one_d, 0, own[i], own[i + 1]).way /
                                 measure(StreamType::three_d_spatial, 0, all[i], all[i + 1]).way;
            own[i].ease_out[0].speed *= share;
            own[i + 1].ease_in[0].speed *= share;
        }
        data.keyframes = own;
    }
    return dimensions;
}

}  // namespace lottie::document
