// Layers that are not in the file, as an exporter would write them.
#include "write/new_layer_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "document/json_text.h"
#include "model/item.h"
#include "shared/fields.h"
#include "shared/layer_types.h"
#include "write/effect_writer.h"
#include "write/matte_members.h"
#include "write/stream_writer.h"

namespace lottie::document {
namespace {

std::string hex_color(const std::array<double, 4>& color) {
    std::array<char, 8> text{};
    const auto byte = [](double share) {
        return static_cast<unsigned>(std::lround(std::clamp(share, 0.0, 1.0) * 255));
    };
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", byte(color[0]), byte(color[1]), byte(color[2]));
    return text.data();
}

class NewLayer {
  public:
    NewLayer(const WriteContext& context, host::model::Layer& layer, const host::model::Layer* above)
        : context_(context), layer_(layer), above_(above), source_(layer.source()) {}

    std::string text() {
        const auto flag = [this](host::model::LayerFlag which) { return layer_.has_flag(which) ? "1" : "0"; };
        const int type = type_of_new();
        add(Field::ddd, layer_.is_3d() ? "1" : "0");
        add(Field::ind, number_of(layer_));
        add(Field::ty, std::to_string(type));
        add(Field::nm, encode_string(layer_.display_name()));
        if (layer_.parent() != nullptr) add(Field::parent, number_of(*layer_.parent()));
        if (layer_.matte() != nullptr) {
            add(Field::tt, std::to_string(static_cast<int>(layer_.matte_type())));
            if (names_matte(layer_, above_)) add(Field::tp, number_of(*layer_.matte()));
        }
        const bool is_matte = !layer_.matte_users().empty();
        if (is_matte) add(Field::td, "1");
        if (!is_matte && !layer_.has_flag(host::model::kVideoActive)) add(Field::hd, "true");
        const std::string id = type == kCompType || type == kImageType ? asset_id() : std::string();
        if (!id.empty()) add(Field::ref_id, encode_string(id));
        add(Field::sr, number_text(layer_.stretch()));
        add(Field::ks, transform_text(context_, layer_));
        add(Field::ao, flag(host::model::kAutoOrient));
        const std::string effects = effects_text(context_, layer_);
        if (!effects.empty()) add(Field::ef, effects);
        if (layer_.has_flag(host::model::kTimeRemap)) add(Field::tm, time_remap_text(context_, layer_));
        if (type == kSolidType) {
            add(Field::sw, std::to_string(source_->width()));
            add(Field::sh, std::to_string(source_->height()));
            add(Field::sc, encode_string(hex_color(source_->footage().color)));
        }
        if (type == kCompType) {
            add(Field::w, std::to_string(source_->width()));
            add(Field::h, std::to_string(source_->height()));
        }
        add(Field::ip, context_.clock().text(layer_.in_point()));
        add(Field::op, context_.clock().text(layer_.in_point() + layer_.duration()));
        add(Field::st, context_.clock().text(layer_.offset()));
        if (layer_.has_flag(host::model::kCollapse)) add(Field::ct, "1");
        add(Field::bm, "0");
        return out_ + "}";
    }

  private:
    void add(Field field, const std::string& value) {
        out_ += out_.empty() ? "{\"" : ",\"";
        out_ += std::string(key_of(field)) + "\":" + value;
    }

    static std::string number_text(double number) {
        std::string out;
        append_number(out, number);
        return out;
    }

    std::string number_of(const host::model::Layer& layer) const {
        return std::to_string(context_.numbers.number(layer).value_or(0));
    }

    // The host makes nulls and layers of items; anything without a picture of its own is a null to players.
    int type_of_new() const {
        if (layer_.has_flag(host::model::kIsNull) || source_ == nullptr) return kNullType;
        if (source_->type() == host::model::ItemType::comp) return kCompType;
        if (source_->footage().is_solid) return kSolidType;
        return asset_id().empty() ? kNullType : kImageType;
    }

    std::string asset_id() const {
        for (const StoredAsset& asset : context_.store.assets) {
            if (asset.item == source_) return asset.id;
        }
        const auto found = context_.new_ids.find(source_);
        return found == context_.new_ids.end() ? std::string() : found->second;
    }

    const WriteContext& context_;
    host::model::Layer& layer_;
    const host::model::Layer* above_;
    host::model::Item* source_;
    std::string out_;
};

}  // namespace

std::string new_layer_text(const WriteContext& context, host::model::Layer& layer, const host::model::Layer* above) {
    return NewLayer(context, layer, above).text();
}

}  // namespace lottie::document
