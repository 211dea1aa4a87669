// Layers whose text is the file's, with changes.
#include "write/layer_writer.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "document/json_text.h"
#include "document/layer_members.h"
#include "document/object_edit.h"
#include "shared/fields.h"
#include "shared/refuse.h"
#include "write/effect_writer.h"
#include "write/matte_members.h"
#include "write/new_layer_writer.h"
#include "write/stream_writer.h"

namespace lottie::document {
namespace {

using host::model::Layer;

struct Switch {
    host::model::LayerFlag flag;
    Field field;
    std::string_view on;
    std::string_view off;
};
constexpr std::array<Switch, 4> kSwitches{{{host::model::kIs3D, Field::ddd, "1", "0"},
                                           {host::model::kAutoOrient, Field::ao, "1", "0"},
                                           {host::model::kCollapse, Field::ct, "1", "0"},
                                           {host::model::kMotionBlur, Field::mb, "true", "false"}}};

bool has_changed_expressions(const Layer& layer) {
    const auto& streams = layer.other_streams();
    return std::any_of(streams.begin(), streams.end(), [](const auto& stream) { return stream->is_changed(); });
}

bool has_changed_content(const Layer& layer) {
    if (!layer.is_content_loaded()) return false;
    if (layer.has_changed_streams()) return true;
    for (const auto& effect : layer.loaded_effects()) {
        const auto* stored = dynamic_cast<const StoredEffect*>(effect->format_data().get());
        if (stored == nullptr || stored->flags != effect->flags()) return true;
        for (std::size_t i = 0; i < effect->parameter_count(); ++i) {
            if (effect->parameter(i).is_changed()) return true;
        }
    }
    return has_changed_expressions(layer);
}

bool has_same_name(const Layer& layer, const StoredLayer& base) {
    const std::string_view literal = base.name.of(base.comp->store->text);
    return literal.empty() ? layer.own_name().empty() : string_equals(literal, layer.own_name());
}

class LayerEditor {
  public:
    LayerEditor(const WriteContext& context, Layer& layer, const StoredLayer& base, const Layer* above)
        : context_(context),
          layer_(layer),
          base_(base),
          above_(above),
          shift_(layer.offset() - base.offset),
          tree_(context.store.text, base.text, depth(), base.shapes),
          read_{base, tree_},
          root_(tree_, tree_.root(), layer_member_order()) {}

    void write(OutputText& out) {
        edit_identity();
        edit_matte();
        edit_switches();
        edit_timing();
        edit_layer_streams(patch_, root_, context_, read_, layer_);
        if (base_.contains_layer_parameters && !is_from_file(layer_)) layer_.effect_count();  // loads the content
        if (layer_.is_content_loaded()) {
            edit_effects(patch_, root_, context_, read_, layer_);
            edit_other_expressions(patch_, tree_, layer_);
        }
        if (shift_ != host::model::Time{}) shift_keyframes(patch_, read_, shift_);
        root_.apply(patch_);
        patch_.write(context_.store.text, base_.text, out);
    }

  private:
    // Nobody asks for what stays as it is.
    JsonTree::Depth depth() const {
        if (has_changed_expressions(layer_)) return JsonTree::Depth::all;
        return shift_ != host::model::Time{} ? JsonTree::Depth::keyframes : JsonTree::Depth::own_streams;
    }

    void set(Field field, std::string value) { root_.set(key_of(field), std::move(value)); }
    void remove(Field field) { root_.remove(key_of(field)); }

    // `now` where the file says `before`.
    void edit_number(Field field, std::optional<std::int64_t> before, std::optional<std::int64_t> now) {
        if (before == now) return;
        if (now) {
            set(field, std::to_string(*now));
        } else {
            remove(field);
        }
    }

    void edit_identity() {
        edit_number(Field::ind, base_.ind, context_.numbers.number(layer_));
        const Layer* parent = layer_.parent();
        edit_number(Field::parent, base_.parent, parent == nullptr ? std::nullopt : context_.numbers.number(*parent));
        if (!has_same_name(layer_, base_)) set(Field::nm, encode_string(layer_.display_name()));
    }

    void edit_matte() {
        if (layer_.matte() != nullptr) {
            if (layer_.matte_type() != base_.matte_type)
                set(Field::tt, std::to_string(static_cast<int>(layer_.matte_type())));
            if (names_matte(layer_, above_))
                edit_number(Field::tp, base_.matte, context_.numbers.number(*layer_.matte()));
        } else if (base_.uses_matte && !keeps_empty_matte(layer_, base_, above_)) {
            remove(Field::tt);
            remove(Field::tp);
        }
        const MatteMarks marks = marks_of(layer_, base_);
        if (marks.is_matte && !base_.is_matte) set(Field::td, "1");
        if (!marks.is_matte && base_.is_matte) remove(Field::td);
        if (marks.is_hidden && !base_.is_hidden) set(Field::hd, "true");
        if (!marks.is_hidden && base_.is_hidden) remove(Field::hd);
    }

    void edit_switches() {
        for (const Switch& each : kSwitches) {
            const bool is_on = layer_.has_flag(each.flag);
            if (is_on != ((base_.flags & each.flag) != 0)) set(each.field, std::string(is_on ? each.on : each.off));
        }
    }

    void edit_timing() {
        const FrameClock& clock = context_.clock();
        const VerbatimTimes& edges = context_.store.edges;
        const host::model::Time in = layer_.in_point();
        const host::model::Time out = in + layer_.duration();
        const host::model::Time old_out = base_.in_point + base_.duration;
        if (layer_.offset() != base_.offset) set(Field::st, clock.text(layer_.offset()));
        if (in == base_.in_point && out == old_out) return;
        const double move = edges.exact(clock, layer_.offset()) - edges.exact(clock, base_.offset);
        if (in != base_.in_point && !keep_far_edge(Field::ip, in - base_.in_point, move))
            set(Field::ip, edges.begin_text(clock, in, edges.exact(clock, base_.in_point) + move));
        if (out != old_out && !keep_far_edge(Field::op, out - old_out, move))
            set(Field::op, edges.end_text(clock, out, edges.exact(clock, old_out) + move));
    }

    // An edge beyond the clock's range that moved with the layer, uncut, moves where it stands in the file.
    bool keep_far_edge(Field field, host::model::Time moved, double move) {
        const JsonNode* edge = tree_.member(&tree_.root(), key_of(field));
        if (edge == nullptr || moved != layer_.offset() - base_.offset) return false;
        const double frames = tree_.number(*edge);
        if (context_.clock().time(frames)) return false;
        std::string text;
        append_number(text, frames + move);
        set(field, std::move(text));
        return true;
    }

    const WriteContext& context_;
    Layer& layer_;
    const StoredLayer& base_;
    const Layer* above_;
    host::model::Time shift_;
    JsonTree tree_;
    ReadContext read_;
    Patch patch_;
    ObjectEdit root_;
};

}  // namespace

bool is_untouched(const Numbering& numbers, const Layer& layer, const Layer* above) {
    if (!is_from_file(layer)) return false;
    const StoredLayer& base = *base_of(layer);
    const MatteMarks marks = marks_of(layer, base);
    const bool has_same_matte = layer.matte() == base.matte_layer && layer.matte_type() == base.matte_type;
    const bool matte_is_told = layer.matte() != nullptr ? base.matte || above == layer.matte()
                                                        : !base.uses_matte || keeps_empty_matte(layer, base, above);
    const bool has_same_state =
        !layer.is_state_touched() ||
        (layer.flags() == base.flags && layer.offset() == base.offset && layer.in_point() == base.in_point &&
         layer.duration() == base.duration && layer.parent() == base.parent_layer && has_same_name(layer, base));
    return has_same_state && has_same_matte && matte_is_told && marks.is_matte == base.is_matte &&
           marks.is_hidden == base.is_hidden && numbers.number(layer) == base.ind && !has_changed_content(layer);
}

void write_layer(OutputText& out, const WriteContext& context, Layer& layer, const Layer* above) {
    const StoredLayer* base = base_of(layer);
    try {
        if (base == nullptr) {
            out.append(new_layer_text(context, layer, above));
        } else if (is_untouched(context.numbers, layer, above)) {
            out.refer(base->text.of(context.store.text));
        } else {
            LayerEditor(context, layer, *base, above).write(out);
        }
    } catch (const std::range_error&) {
        refuse(context.store.text, base == nullptr ? 0 : base->text.begin, base == nullptr ? "" : base->pointer(),
               "Layer " + quoted_name(layer.display_name()) +
                   " cannot be written: its numbers are so large that one computed from them is not finite.");
    }
}

}  // namespace lottie::document
