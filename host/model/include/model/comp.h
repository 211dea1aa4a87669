// A composition: a stack of layers with a size, a frame rate and a selection.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/item.h"
#include "model/layer.h"
#include "model/layer_stack.h"

namespace host::model {

class LayerNames;

class Comp : public Item {
  public:
    Comp(Project& project, ItemId id, std::string name);
    ~Comp() override;

    // Layers. Index 0 is the top; indices out of range throw bad_argument.
    int layer_count() const { return stack_.size(); }
    Layer& layer_at(int index) const;
    Layer* layer_named(std::string_view display_name) const;  // the topmost of that name, null if none
    const LayerStack& stack() const { return stack_; }

    // All undoable. Dead arguments throw bad_argument. New layers start at composition time 0 and last as long as the
    // composition unless stated otherwise.
    Layer& add_layer(Item& source);                              // above all others; throws bad_argument for a cycle
    Layer& create_null(const std::string& name, Time duration);  // duration 0 = the composition's
    // Like copy and paste: inserts directly above the topmost selected layer, else on top; keeps the selection. Links
    // to layers of another composition (parent, matte, effect parameters) are dropped, unless HostRules keep those to
    // layers already copied here; a matte by position is not a link. Throws bad_argument if the layer's source contains
    // this composition.
    Layer& copy_layer_here(Layer& original);

    // For readers: appends below all others.
    Layer& load_layer(LayerKind kind, Item* source);

    // Selection, in the order that HostRules say. Selecting is not an undo step; undoing a step restores the selection
    // from before it.
    std::vector<Layer*> selected_layers() const;
    void select(const std::vector<Layer*>& layers);  // replaces; throws bad_argument for a dead or foreign layer

    double frame_rate() const { return frame_rate_; }
    Time duration() const { return duration_; }
    Time frame_duration() const;
    Time current_time() const { return current_time_; }
    void set_current_time(Time t) { current_time_ = t; }
    std::int64_t time_scale() const;  // of the times of its layers that plug-ins receive
    void override_time_scale(std::int64_t scale) { time_scale_override_ = scale; }
    void load_timing(double frame_rate, Time duration) { frame_rate_ = frame_rate, duration_ = duration; }

    // Whether `other` is this composition or nested in it at any depth.
    bool contains(const Comp& other) const;

  private:
    friend class Item;
    friend class Layer;
    friend class Project;
    using Selection = std::map<std::uint64_t, Layer*>;  // by rank, in order of selection

    Layer& make_layer(LayerKind kind, Item* source);  // owned, not yet in the stack
    void add_undoably(Layer& layer, int index);
    // Adds a layer to the stack and every list of layers, or removes it; not undoable.
    void enter(Layer& layer, int index);
    void leave(Layer& layer);
    void renew_matte(int index);
    void replace_selection(Selection selection);
    void set_selection_rank(Layer& layer, std::uint64_t rank);  // 0 = not selected
    void load_layer_parameters();
    std::string numbered_name(const std::string& name) const;
    Layer* copy_of(const Layer& original) const;  // the newest here, if alive
    void drop_foreign_links(Layer& copy, const Layer& original) const;

    std::vector<std::unique_ptr<Layer>> owned_;  // living and deleted
    LayerStack stack_;
    std::map<ItemId, int> using_comps_;          // how many layers in each composition have this one as their source
    mutable std::unique_ptr<LayerNames> names_;  // built on demand
    Selection selection_;
    std::uint64_t last_selection_rank_ = 0;
    std::vector<Layer*>
        unloaded_layer_parameters_;  // layers whose unread content has effect parameters that name layers
    std::unordered_map<LayerId, Layer*> newest_copy_;           // by the original's id
    mutable std::unordered_map<std::string, int> last_number_;  // of copies with numbered names
    double frame_rate_ = 30;
    Time duration_;
    Time current_time_;
    std::int64_t time_scale_override_ = 0;
    bool has_mattes_above_ = false;  // some layer had its matte by position
};

}  // namespace host::model
