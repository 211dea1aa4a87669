// Keyframes as the file spells them.
#include "write/keyframe_writer.h"

#include <array>
#include <optional>

#include "document/json_text.h"
#include "document/object_edit.h"
#include "shared/ease.h"

namespace lottie::document {
namespace {

using host::model::Interpolation;
using host::model::Keyframe;
using host::model::Value;

constexpr std::array<std::string_view, 9> kKeyOrder = {"i", "o", "n", "t", "s", "e", "h", "to", "ti"};

class KeyframeWriter {
  public:
    KeyframeWriter(const WriteContext& context, const CurrentStream& now, std::size_t numbers)
        : context_(context),
          now_(now),
          keys_(now.data.keyframes.to_vector()),
          numbers_(numbers),
          eases_(static_cast<std::size_t>(host::model::temporal_dimensions(now.type))) {}

    bool is_last(std::size_t i) const { return i + 1 == keys_.size(); }

    // Whether keyframe `i`, written anew, gives the value at its segment's end.
    bool gives_end(std::size_t i) const {
        return context_.writes_end_values && !is_last(i) && keys_[i].out != Interpolation::hold;
    }

    std::string value(const Value& value) const { return value_text(context_, now_.type, value, numbers_); }

    std::string handle(std::size_t i, bool out) const {
        std::string x;
        std::string y;
        for (std::size_t d = 0; d < eases_; ++d) {
            const SegmentMeasure segment = measure(now_.type, d, keys_[i], keys_[i + 1]);
            const Keyframe& key = keys_[out ? i : i + 1];
            host::model::Ease ease = out ? key.ease_out[d] : key.ease_in[d];
            Interpolation side = out ? key.out : key.in;
            // Beside one that is not linear a linear side would be read as one that leaves the value, and comes back.
            if (!segment.moves && side != Interpolation::bezier && keys_[i].out != keys_[i + 1].in) {
                ease.speed = 0;
                side = Interpolation::bezier;
            }
            const EaseHandle at = out ? handle_out(ease, side, segment) : handle_in(ease, side, segment);
            append_number(x += d == 0 ? "" : ",", at.x);
            append_number(y += d == 0 ? "" : ",", at.y);
        }
        if (host::model::is_spatial(now_.type)) return "{\"x\":" + x + ",\"y\":" + y + "}";
        return "{\"x\":[" + x + "],\"y\":[" + y + "]}";
    }

    bool has_tangents(std::size_t i) const {
        return host::model::is_spatial(now_.type) &&
               (keys_[i].tangent_out != Value{} || keys_[i + 1].tangent_in != Value{});
    }

    std::string text(std::size_t i) const {
        std::string out = "{";
        const bool has_segment = !is_last(i) && keys_[i].out != Interpolation::hold;
        if (has_segment) out += "\"i\":" + handle(i, false) + ",\"o\":" + handle(i, true) + ",";
        out += "\"t\":" + context_.clock().text(now_.offset + keys_[i].time);
        out += ",\"s\":" + value(keys_[i].value);
        if (gives_end(i)) out += ",\"e\":" + value(keys_[i + 1].value);
        if (keys_[i].out == Interpolation::hold) out += ",\"h\":1";
        if (has_segment && has_tangents(i)) {
            out += ",\"to\":" + value(keys_[i].tangent_out) + ",\"ti\":" + value(keys_[i + 1].tangent_in);
        }
        return out + "}";
    }

    std::string all() const {
        std::string out = "[";
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            out += (i == 0 ? "" : ",") + text(i);
        }
        return out + "]";
    }

  protected:
    const WriteContext& context_;
    const CurrentStream& now_;
    const std::vector<Keyframe> keys_;
    std::size_t numbers_;
    std::size_t eases_;
};

class KeyframeEditor : private KeyframeWriter {
  public:
    KeyframeEditor(const WriteContext& context, const ReadContext& base, const ParsedProperty& property,
                   const CurrentStream& now, std::size_t numbers)
        : KeyframeWriter(context, now, numbers),
          base_(base),
          tree_(base.tree),
          property_(property),
          old_(property.keys) {}

    void edit(Patch& patch) {
        if (!property_.is_in_order) {
            patch.replace(property_.value->text, all());
            return;
        }
        pair_up();
        std::vector<Slice> units;
        for (const ParsedKey& parsed : old_) units.push_back(parsed.node->text);
        SequenceEdit sequence(tree_.whole_text(), property_.value->text, std::move(units));
        std::vector<bool> stays(old_.size(), false);
        std::size_t place = 0;
        bool end_was_given = false;  // by the keyframe before
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            if (partners_[i]) {
                // In old files the last one may have no value of its own.
                edit_key(patch, i, *partners_[i], !end_was_given || !is_last(i));
                stays[*partners_[i]] = true;
                place = *partners_[i] + 1;
                end_was_given = tree_.member(old_[*partners_[i]].node, "e") != nullptr;
            } else {
                sequence.insert_before(place, text(i));
                end_was_given = gives_end(i);
            }
        }
        for (std::size_t j = 0; j < old_.size(); ++j) {
            if (!stays[j]) sequence.remove(j);
        }
        sequence.apply(patch);
    }

  private:
    // A keyframe keeps its bytes if it stands at the same time and so does the next, whose ease and value it tells.
    void pair_up() {
        std::vector<std::optional<std::size_t>> same_time(keys_.size());
        for (std::size_t i = 0, j = 0; i < keys_.size() && j < old_.size();) {
            if (keys_[i].time == old_[j].key.time) {
                same_time[i++] = j++;
            } else if (keys_[i].time < old_[j].key.time) {
                ++i;
            } else {
                ++j;
            }
        }
        partners_.resize(keys_.size());
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            if (!same_time[i] || keys_[i].out != old_[*same_time[i]].key.out) continue;
            const std::size_t j = *same_time[i];
            const bool both_last = is_last(i) && j + 1 == old_.size();
            const bool same_next = !is_last(i) && same_time[i + 1] == j + 1;
            if (both_last || same_next) partners_[i] = j;
        }
    }

    void set_value(ObjectEdit& edit, std::size_t j, std::string_view key, const Value& value) const {
        const JsonNode* node = tree_.member(old_[j].node, key);
        if (node == nullptr || !is_spelled(context_, now_.type, value, numbers_, tree_, *node)) {
            edit.set(key, value_text(context_, now_.type, value, numbers_, &tree_, node));
        }
    }

    void edit_key(Patch& patch, std::size_t i, std::size_t j, bool needs_value) {
        const ParsedKey& old = old_[j];
        ObjectEdit edit(tree_, *old.node, kKeyOrder);
        const host::model::Time shift = now_.offset - base_.layer.offset;
        if (shift != host::model::Time{}) edit.set("t", context_.clock().text(old.file_time + shift));
        if (needs_value || edit.has("s")) set_value(edit, j, "s", keys_[i].value);
        if (!is_last(i)) {
            const Keyframe& next = keys_[i + 1];
            const Keyframe& old_next = old_[j + 1].key;
            const bool same_end = next.value == old_next.value && !names_layers();
            // A segment may end elsewhere than the next keyframe begins; that stays as long as the next one does.
            if (edit.has("e") && !same_end) set_value(edit, j, "e", next.value);
            if (keys_[i].out != Interpolation::hold) {
                const bool same_ease =
                    keys_[i].ease_out == old.key.ease_out && next.ease_in == old_next.ease_in && next.in == old_next.in;
                if (!same_ease) {
                    edit.set("o", handle(i, true));
                    edit.set("i", handle(i, false));
                    edit.remove("n");  // players look the curve up by this name
                }
                edit_tangents(edit, i, j);
            }
        }
        edit.apply(patch);
    }

    bool names_layers() const { return now_.type == host::model::StreamType::layer_id; }

    void edit_tangents(ObjectEdit& edit, std::size_t i, std::size_t j) const {
        if (!host::model::is_spatial(now_.type)) return;
        if (edit.has("to") || has_tangents(i)) set_value(edit, j, "to", keys_[i].tangent_out);
        if (edit.has("ti") || has_tangents(i)) set_value(edit, j, "ti", keys_[i + 1].tangent_in);
    }

    const ReadContext& base_;
    const JsonTree& tree_;
    const ParsedProperty& property_;
    const std::vector<ParsedKey>& old_;
    std::vector<std::optional<std::size_t>> partners_;  // the file's keyframe that stays in its place
};

}  // namespace

std::string value_text(const WriteContext& context, host::model::StreamType type, const Value& value,
                       std::size_t numbers, const JsonTree* tree, const JsonNode* spelled) {
    std::array<double, 4> all{};
    for (std::size_t d = 0; d < numbers; ++d) all[d] = context.number(type, value, d);
    const std::span<const double> used(all.data(), numbers);
    if (tree == nullptr || spelled == nullptr) return number_array(used);
    return number_array(used, tree->whole_text(), tree->number_slices(*spelled));
}

bool is_spelled(const WriteContext& context, host::model::StreamType type, const Value& value, std::size_t numbers,
                const JsonTree& tree, const JsonNode& node) {
    const std::vector<double> spelled = tree.numbers(node);
    if (spelled.size() < numbers) return false;
    for (std::size_t d = 0; d < numbers; ++d) {
        if (context.number(type, value, d) != spelled[d]) return false;
    }
    return true;
}

std::string keyframes_text(const WriteContext& context, const CurrentStream& now, std::size_t numbers) {
    return KeyframeWriter(context, now, numbers).all();
}

void edit_keyframes(Patch& patch, const WriteContext& context, const ReadContext& base, const ParsedProperty& property,
                    const CurrentStream& now, std::size_t numbers) {
    KeyframeEditor(context, base, property, now, numbers).edit(patch);
}

}  // namespace lottie::document
