// A composition: a stack of layers with a size, a frame rate and a selection.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "model/item.h"
#include "model/layer.h"
#include "model/layer_stack.h"

namespace host::model {

class Comp : public Item {
  public:
    Comp(Project& project, ItemId id, std::string name);
    ~Comp() override;

    // Layers. Index 0 is the top; indices out of range throw bad_argument.
    int layer_count() const { return stack_.size(); }
    Layer& layer_at(int index) const;
    Layer* layer_named(std::string_view display_name) const;  // the topmost of that name, null if none
    const LayerStack& stack() const { return stack_; }

    // All undoable. New layers start at composition time 0 and last as long as the composition unless told otherwise.
    Layer& add_layer(Item& source);                             // above all others; throws bad_argument for a cycle
    Layer& create_null(const std::string& name, Time duration);  // duration 0 = the composition's
    // As copying and pasting does: directly above the topmost selected layer, else on top; selection unchanged.
    // Throws bad_argument when the layer's source contains this composition.
    Layer& copy_layer_here(Layer& original);

    // For readers: appends below all others.
    Layer& load_layer(LayerKind kind, Item* source);

    // Selection, in the order that HostRules name.
    std::vector<Layer*> selected_layers() const;
    void select(const std::vector<Layer*>& layers);  // replaces; throws bad_argument for a dead or foreign layer

    double frame_rate() const { return frame_rate_; }
    Time duration() const { return duration_; }
    Time frame_duration() const;
    Time current_time() const { return current_time_; }
    void set_current_time(Time t) { current_time_ = t; }
    std::int64_t time_scale() const;  // of times that plug-ins get about this composition's layers
    void override_time_scale(std::int64_t scale) { time_scale_override_ = scale; }
    void load_timing(double frame_rate, Time duration) { frame_rate_ = frame_rate, duration_ = duration; }

    // Whether `other` is this composition or used inside it at any depth.
    bool contains(const Comp& other) const;

  private:
    friend class Layer;
    friend class Project;

    std::vector<std::unique_ptr<Layer>> owned_;  // living and deleted
    LayerStack stack_;
    std::vector<Layer*> selection_;  // in order of selecting
    double frame_rate_ = 30;
    Time duration_;
    Time current_time_;
    std::int64_t time_scale_override_ = 0;
};

}  // namespace host::model
