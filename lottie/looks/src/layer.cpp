// A layer of an animation as players see it.
#include "layer.h"

#include <algorithm>
#include <stdexcept>

namespace lottie::looks {
namespace {

constexpr int kAdjustmentLayer = 12;  // the exporter's own number

LayerType type_of(int kind) {
    return (kind >= 0 && kind <= 5) || kind == 13 ? static_cast<LayerType>(kind) : LayerType::other;
}

std::optional<double> optional_number(std::string_view text) {
    return is_number(text) ? std::optional(number_of(text, 0)) : std::nullopt;
}

}  // namespace

SceneLayer::SceneLayer(TextReader& reader, const Counterparts& counterparts, const std::shared_ptr<Arena>& arena)
    : arena_(arena) {
    if (reader.peek() != '{') throw std::runtime_error("the animation cannot be read");
    const char* begin = reader.position();
    reader.enter_object();
    std::string key;
    std::string_view solid_width, solid_height;
    while (reader.next_member(key)) {
        const char first = reader.peek();
        if (first != '{' && first != '[') {
            const std::string_view value = reader.skip();
            if (key == "sw") solid_width = value;
            if (key == "sh") solid_height = value;
            read_member(key, value);
            continue;
        }
        std::shared_ptr<const LayerPart> part;
        for (const SceneLayer* counterpart : counterparts) {
            if (counterpart == nullptr || part != nullptr) continue;
            const auto same = counterpart->shared_part(key);
            if (same != nullptr && reader.skip_if(same->text())) part = same;
        }
        if (part == nullptr) {
            Contents contents;
            const std::string_view text = reader.skip(contents);
            part = std::make_shared<LayerPart>(key, text, contents, arena);
        }
        std::erase_if(parts_, [&key](const auto& one) { return one->key() == key; });  // the last one counts
        parts_.push_back(std::move(part));
    }
    text_ = {begin, static_cast<std::size_t>(reader.position() - begin)};
    if (type == LayerType::solid) {
        width = number_of(solid_width, 0);
        height = number_of(solid_height, 0);
    }
    if (stretch == 0) stretch = 1;
    if (const Json* remap = json("tm")) time_remap_.emplace(remap, Values{});
    set_transform(counterparts);
    set_shapes(counterparts);
}

void SceneLayer::read_member(const std::string& key, std::string_view value) {
    if (key == "ty") {
        const int kind = static_cast<int>(std::clamp(number_of(value, -1), -1.0, 1e6));
        type = type_of(kind);
        is_adjustment_by_type = kind == kAdjustmentLayer;
    } else if (key == "nm") {
        name = string_of(value);
    } else if (key == "refId") {
        source = string_of(value);
    } else if (key == "sc") {
        color = string_of(value);
    } else if (key == "ind") {
        number = optional_number(value);
    } else if (key == "parent") {
        parent = optional_number(value);
    } else if (key == "tp") {
        matte = optional_number(value);
    } else if (key == "ip") {
        in = number_of(value, 0);
    } else if (key == "op") {
        out = number_of(value, 0);
    } else if (key == "st") {
        start = number_of(value, 0);
    } else if (key == "sr") {
        stretch = number_of(value, 1);
    } else if (key == "w") {
        width = number_of(value, 0);
    } else if (key == "h") {
        height = number_of(value, 0);
    } else if (key == "tt") {
        matte_mode = static_cast<int>(std::clamp(number_of(value, 0), 0.0, 1e6));
    } else if (key == "bm") {
        blend_mode = static_cast<int>(std::clamp(number_of(value, 0), 0.0, 1e6));
    } else if (key == "hd") {
        is_hidden = is_truthy(value);
    } else if (key == "td") {
        is_matte_source = is_truthy(value);
    } else if (key == "ddd") {
        is_3d = is_truthy(value);
    } else if (key == "ao") {
        is_auto_oriented = is_truthy(value);
    } else if (key == "ct" || key == "cp") {
        is_collapsed = is_collapsed || is_truthy(value);
    } else if (key == "mb") {
        has_motion_blur = is_truthy(value);
    } else if (key == "xt") {
        runs_while_off = is_truthy(value);
    } else if (key == "hasMask") {
        has_masks = is_truthy(value);
    }
}

std::shared_ptr<const LayerPart> SceneLayer::shared_part(std::string_view key) const {
    const auto found = std::find_if(parts_.begin(), parts_.end(), [key](const auto& one) { return one->key() == key; });
    return found == parts_.end() ? nullptr : *found;
}

void SceneLayer::set_transform(const Counterparts& counterparts) {
    const auto part = shared_part("ks");
    for (const SceneLayer* counterpart : counterparts) {
        if (counterpart != nullptr && counterpart->transform_->part == part && counterpart->is_3d == is_3d &&
            counterpart->is_auto_oriented == is_auto_oriented) {
            transform_ = counterpart->transform_;
            return;
        }
    }
    transform_ = std::make_shared<LazyTransform>();
    transform_->part = part;
}

void SceneLayer::set_shapes(const Counterparts& counterparts) {
    const auto part = shared_part("shapes");
    for (const SceneLayer* counterpart : counterparts) {
        if (counterpart != nullptr && counterpart->shapes_->part == part) {
            shapes_ = counterpart->shapes_;
            return;
        }
    }
    shapes_ = std::make_shared<LazyShapes>();
    shapes_->part = part;
}

double SceneLayer::inner_frame(double frame, double frame_rate) const {
    return time_remap_ ? time_remap_->at(frame)[0] * frame_rate : (frame - start) / stretch;
}

bool SceneLayer::changes_by_itself() const {
    return std::any_of(parts_.begin(), parts_.end(), [](const auto& part) { return part->changes_over_time(); });
}

const LayerPart* SceneLayer::part(std::string_view key) const {
    const auto found = std::find_if(parts_.begin(), parts_.end(), [key](const auto& one) { return one->key() == key; });
    return found == parts_.end() ? nullptr : found->get();
}

const Json* SceneLayer::json(std::string_view key) const {
    const LayerPart* found = part(key);
    return found == nullptr ? nullptr : &found->json();
}

Json::ConstArray SceneLayer::array(std::string_view key) const {
    return elements(json(key));
}

const Transform& SceneLayer::transform() const {
    if (!transform_->value) {
        static const Json kNone;
        transform_->value.emplace(transform_->part == nullptr ? kNone : transform_->part->json(), is_3d,
                                  is_auto_oriented);
    }
    return *transform_->value;
}

const std::vector<MaskContent>& SceneLayer::masks() const {
    if (!masks_) {
        masks_.emplace();
        if (has_masks) {
            for (const Json& mask : array("masksProperties")) masks_->emplace_back(mask);
        }
    }
    return *masks_;
}

const ShapeContent& SceneLayer::shapes() const {
    if (!shapes_->value) shapes_->value.emplace(array("shapes"));
    return *shapes_->value;
}

}  // namespace lottie::looks
