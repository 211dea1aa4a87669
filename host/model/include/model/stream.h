// A stream: a property over time, with a static value or keyframes, and possibly an expression.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/keyframe_list.h"
#include "model/value.h"

namespace host::model {

class Layer;

// The content of a stream. Immutable while shared: equal pointers mean "unchanged".
struct StreamData {
    Value static_value;
    KeyframeList keyframes;           // ascending, distinct times
    std::string expression;           // any bytes; empty for none
    bool expression_enabled = false;  // the user's switch, which a broken expression keeps
};

class Stream {
  public:
    Stream(Layer& owner, StreamType type, std::string name, std::shared_ptr<const StreamData> data);
    Stream(Layer& new_owner, const Stream& original);  // shares the data
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    Layer& owner() const { return *owner_; }
    StreamType type() const { return type_; }
    const std::string& name() const { return name_; }
    // Ascends in the order in which streams were added to their layers; 0 before that.
    std::uint64_t serial() const { return serial_; }

    const StreamData& data() const { return *data_; }
    // The data the stream was loaded with; null for streams that the host created. The same object as data() while
    // unchanged.
    const std::shared_ptr<const StreamData>& loaded() const { return loaded_; }
    bool is_changed() const { return data_ != loaded_; }
    void mark_loaded() { loaded_ = data_; }

    bool can_vary_over_time() const { return can_vary_; }
    void set_can_vary(bool can_vary) { can_vary_ = can_vary; }
    bool is_separated() const { return separated_; }
    void set_separated(bool separated) { separated_ = separated; }
    // Has keyframes, or an expression that is enabled and not broken.
    bool is_time_varying() const;

    // The value at `t` (keyframe time: composition time minus the layer's offset), ignoring expressions.
    Value value_at(Time t) const;
    // Throws not_allowed if the stream has keyframes. Streams without data ignore it.
    void set_static_value(const Value& value);

    // Keyframes. Indices out of range throw bad_argument; a stream that cannot vary throws not_allowed.
    std::size_t keyframe_count() const { return data_->keyframes.size(); }
    Keyframe keyframe(std::size_t index) const;
    // Creates a keyframe with the stream's value at `t` unless there is one; returns its index.
    std::size_t insert_keyframe(Time t);
    // Replaces a keyframe; a different time throws bad_argument. Spatial and roving flags throw not_allowed unless the
    // stream is spatial; on the first and last keyframe roving is ignored. The times of roving keyframes are not
    // changed.
    void set_keyframe(std::size_t index, const Keyframe& keyframe);
    // Adds keyframes in one undo step; where one exists, only its value is replaced.
    void add_keyframes(const std::vector<std::pair<Time, Value>>& batch);
    // Replaces all keyframes and the static value.
    void replace(Value static_value, KeyframeList keyframes);

    // Expressions. The state is true if the expression is enabled and not broken.
    bool has_expression() const { return !data_->expression.empty(); }
    bool is_expression_broken() const;
    bool expression_state() const;
    void set_expression(
        std::string_view text);  // enables it; empty removes it; throws not_allowed if the stream cannot vary
    void set_expression_state(bool enabled);
    void replace_expression_text(std::string text);  // keeps the switch

  private:
    friend class ExpressionIndex;
    friend class Layer;
    friend class LayerParameterIndex;

    void require_keyframes_possible() const;
    void require_layer_unlocked() const;
    // Records the old data for undo, once per undo step, and returns unshared data.
    StreamData& writable();
    void restore(const std::shared_ptr<const StreamData>& data);
    void changed(bool expression_too);  // updates the project's indexes
    void set_failed(bool failed);       // undoable
    void load_failed(bool failed);

    Layer* owner_;
    StreamType type_;
    bool can_vary_ = true;
    bool separated_ = false;
    bool attached_ = false;  // part of its layer, and may be indexed
    bool failed_ = false;    // its expression broke, under rules where it stays disabled
    bool indexed_ = false;   // its expression is in the index
    bool awaits_index_ = false;
    std::string name_;
    std::shared_ptr<const StreamData> data_;
    std::shared_ptr<const StreamData> loaded_;
    std::uint64_t touched_in_step_ = 0;
    std::uint64_t serial_ = 0;
};

}  // namespace host::model
