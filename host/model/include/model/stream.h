// A stream: a property over time, with a static value or keyframes, and perhaps an expression.
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

// The whole content of a stream. Immutable while shared: equal pointers mean "not changed since".
struct StreamData {
    Value static_value;
    KeyframeList keyframes;           // ascending, distinct times
    std::string expression;           // any bytes; empty for none
    bool expression_enabled = false;  // the user's switch; a broken expression keeps it
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
    // Counts up in the order in which streams became part of their layers; 0 before.
    std::uint64_t serial() const { return serial_; }

    const StreamData& data() const { return *data_; }
    // The data the stream was loaded with, null for a stream the host made. data() == *loaded() by address while
    // unchanged.
    const std::shared_ptr<const StreamData>& loaded() const { return loaded_; }
    bool is_changed() const { return data_ != loaded_; }
    void mark_loaded() { loaded_ = data_; }

    bool can_vary_over_time() const { return can_vary_; }
    void set_can_vary(bool can_vary) { can_vary_ = can_vary; }
    bool is_separated() const { return separated_; }
    void set_separated(bool separated) { separated_ = separated; }
    // Keyframes, or an expression that is enabled and not broken.
    bool is_time_varying() const;

    // Value at `t` (composition time minus the layer's offset, as keyframe times), expressions ignored.
    Value value_at(Time t) const;
    // Only while the stream has no keyframes; throws not_allowed otherwise. Streams without data take it and keep
    // nothing.
    void set_static_value(const Value& value);

    // Keyframes. Indices out of range throw bad_argument; a stream that cannot vary throws not_allowed.
    std::size_t keyframe_count() const { return data_->keyframes.size(); }
    Keyframe keyframe(std::size_t index) const;
    // Makes a keyframe with the value the stream has there, or finds the one that exists; returns its index.
    std::size_t insert_keyframe(Time t);
    // Changes one keyframe in place; another time throws bad_argument. Spatial and roving flags on a stream that is not
    // spatial throw not_allowed; the first and the last keyframe never rove, asking is ignored. The times of roving
    // keyframes stay as given.
    void set_keyframe(std::size_t index, const Keyframe& keyframe);
    // Adds many at once in one undo entry; at a time already keyed only the value is replaced.
    void add_keyframes(const std::vector<std::pair<Time, Value>>& batch);
    // Replaces all keyframes and the static value (compensation).
    void replace(Value static_value, KeyframeList keyframes);

    // Expressions. State: enabled by the user and not broken.
    bool has_expression() const { return !data_->expression.empty(); }
    bool is_expression_broken() const;
    bool expression_state() const;
    void set_expression(std::string_view text);  // empty removes; enables; throws not_allowed if the stream cannot vary
    void set_expression_state(bool enabled);
    void replace_expression_text(std::string text);  // a repair: the switch stays

  private:
    friend class ExpressionIndex;
    friend class Layer;
    friend class LayerParameterIndex;

    void require_keyframes_possible() const;
    void require_layer_unlocked() const;
    // Notes the old data for undo, once per undo step, and gives data that nobody else sees.
    StreamData& writable();
    void restore(const std::shared_ptr<const StreamData>& data);
    void changed(bool expression_too);  // tells the project's indexes
    void set_failed(bool failed);       // undoable
    void load_failed(bool failed);

    Layer* owner_;
    StreamType type_;
    bool can_vary_ = true;
    bool separated_ = false;
    bool attached_ = false;  // part of its layer: the indexes may know it
    bool failed_ = false;    // its expression broke under rules where it does not recover by itself
    bool indexed_ = false;   // its expression is in the index
    bool awaits_index_ = false;
    std::string name_;
    std::shared_ptr<const StreamData> data_;
    std::shared_ptr<const StreamData> loaded_;
    std::uint64_t touched_in_step_ = 0;
    std::uint64_t serial_ = 0;
};

}  // namespace host::model
