// Streams: values, keyframes, expressions, and their undo.
#include "model/stream.h"

#include <algorithm>

#include "expressions/expression_index.h"
#include "layers/layer_parameter_index.h"
#include "model/error.h"
#include "model/layer.h"
#include "model/project.h"
#include "streams/interpolation.h"

namespace host::model {
namespace {

constexpr std::uint32_t kSpatialFlags = kSpatialContinuous | kSpatialAutoBezier | kRoving;

// A new keyframe: linear, without flags.
Keyframe plain_keyframe(Time t, const Value& value) {
    Keyframe keyframe;
    keyframe.time = t;
    keyframe.value = value;
    return keyframe;
}

}  // namespace

Stream::Stream(Layer& owner, StreamType type, std::string name, std::shared_ptr<const StreamData> data)
    : owner_(&owner),
      type_(type),
      can_vary_(type != StreamType::no_data),
      name_(std::move(name)),
      data_(std::move(data)) {
    if (data_ == nullptr) data_ = std::make_shared<StreamData>();
}

Stream::Stream(Layer& new_owner, const Stream& original)
    : owner_(&new_owner),
      type_(original.type_),
      can_vary_(original.can_vary_),
      separated_(original.separated_),
      failed_(original.failed_),
      name_(original.name_),
      data_(original.data_),
      loaded_(original.loaded_) {}

bool Stream::is_time_varying() const {
    return !data_->keyframes.empty() || expression_state();
}

Value Stream::value_at(Time t) const {
    return model::value_at(*data_, type_, t);
}

void Stream::require_keyframes_possible() const {
    if (!can_vary_) throw Error(ErrorKind::not_allowed, "The stream \"" + name_ + "\" cannot vary over time.");
    require_layer_unlocked();
}

void Stream::require_layer_unlocked() const {
    owner_->require_editable();
}

StreamData& Stream::writable() {
    owner_->note_change();
    UndoJournal& journal = owner_->project().undo();
    const std::uint64_t step = journal.step_for_snapshot();
    if (touched_in_step_ != step) {
        touched_in_step_ = step;
        journal.note([this, old = data_] { restore(old); });
    }
    if (data_.use_count() > 1) data_ = std::make_shared<StreamData>(*data_);
    return const_cast<StreamData&>(*data_);  // made by the line above and shared with nobody since
}

void Stream::restore(const std::shared_ptr<const StreamData>& data) {
    owner_->note_change();
    const bool other_text = data->expression != data_->expression;
    data_ = data;
    changed(other_text);
}

void Stream::changed(bool expression_too) {
    if (!attached_) return;
    if (expression_too && (indexed_ || has_expression())) owner_->project().expressions().touch(*this);
    if (type_ == StreamType::layer_id) owner_->project().layer_parameters().touch(*this);
}

void Stream::set_static_value(const Value& value) {
    require_layer_unlocked();
    if (!data_->keyframes.empty()) {
        throw Error(ErrorKind::not_allowed, "The stream \"" + name_ + "\" has keyframes, so it takes no static value.");
    }
    if (type_ == StreamType::no_data || value == data_->static_value) return;
    writable().static_value = value;
    changed(false);
}

Keyframe Stream::keyframe(std::size_t index) const {
    if (index >= data_->keyframes.size()) throw Error(ErrorKind::bad_argument, "There is no keyframe of that index.");
    return data_->keyframes[index];
}

std::size_t Stream::insert_keyframe(Time t) {
    require_keyframes_possible();
    const KeyframeList& now = data_->keyframes;
    const std::size_t index = now.count_before(t);
    if (index < now.size() && now.time(index) == t) return index;
    const Keyframe keyframe = plain_keyframe(t, value_at(t));
    writable().keyframes.insert(index, keyframe);
    changed(false);
    return index;
}

void Stream::set_keyframe(std::size_t index, const Keyframe& keyframe) {
    require_keyframes_possible();
    const Keyframe old = this->keyframe(index);
    if (keyframe.time != old.time) throw Error(ErrorKind::bad_argument, "A keyframe cannot be moved to another time.");
    Keyframe next = keyframe;
    if (!is_spatial(type_) && (next.flags & kSpatialFlags & ~old.flags) != 0) {
        throw Error(ErrorKind::not_allowed, "The stream \"" + name_ + "\" is not spatial.");
    }
    if (index == 0 || index + 1 == keyframe_count()) next.flags &= ~std::uint32_t{kRoving};
    if (next == old) return;
    writable().keyframes.set(index, next);
    changed(false);
}

void Stream::add_keyframes(const std::vector<std::pair<Time, Value>>& batch) {
    require_keyframes_possible();
    if (batch.empty()) return;
    auto sorted = batch;
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<Keyframe> merged;
    const std::vector<Keyframe> keyframes = data_->keyframes.to_vector();
    merged.reserve(keyframes.size() + sorted.size());
    auto old = keyframes.begin();
    for (const auto& [time, value] : sorted) {
        while (old != keyframes.end() && old->time <= time) merged.push_back(*old++);
        if (!merged.empty() && merged.back().time == time) {
            merged.back().value = value;
        } else {
            merged.push_back(plain_keyframe(time, value));
        }
    }
    merged.insert(merged.end(), old, keyframes.end());
    if (merged == keyframes) return;
    writable().keyframes = merged;
    changed(false);
}

void Stream::replace(Value static_value, KeyframeList keyframes) {
    StreamData& data = writable();
    data.static_value = static_value;
    data.keyframes = std::move(keyframes);
    changed(false);
}

bool Stream::is_expression_broken() const {
    if (!has_expression()) return false;
    return failed_ || names_missing_layer(*owner_, data_->expression);
}

bool Stream::expression_state() const {
    return data_->expression_enabled && has_expression() && !is_expression_broken();
}

void Stream::set_failed(bool failed) {
    if (failed_ == failed) return;
    owner_->project().undo().note([this, failed] { load_failed(!failed); });
    load_failed(failed);
}

void Stream::load_failed(bool failed) {
    failed_ = failed;
    if (attached_) owner_->project().expressions().set_failed(*this, failed);
}

void Stream::set_expression(std::string_view text) {
    require_keyframes_possible();
    if (text == data_->expression && data_->expression_enabled == !text.empty() && !failed_) return;
    const UndoScope scope(owner_->project().undo());
    StreamData& data = writable();
    data.expression = text;
    data.expression_enabled = !text.empty();
    set_failed(false);
    changed(true);
}

void Stream::set_expression_state(bool enabled) {
    require_layer_unlocked();
    const UndoScope scope(owner_->project().undo());
    if (enabled) set_failed(false);
    // Without an expression, or with one that does not work, switching on has no effect.
    const bool next = enabled && has_expression() && (data_->expression_enabled || !is_expression_broken());
    if (next == data_->expression_enabled) return;
    writable().expression_enabled = next;
}

void Stream::replace_expression_text(std::string text) {
    if (text == data_->expression) return;
    const UndoScope scope(owner_->project().undo());
    writable().expression = std::move(text);
    set_failed(false);
    changed(true);
}

}  // namespace host::model
