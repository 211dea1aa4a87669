// Compositions: the stack and the lists around it, new layers, selection.
#include "model/comp.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "expressions/expression_index.h"
#include "layers/layer_names.h"
#include "model/error.h"
#include "model/project.h"

namespace host::model {

Comp::Comp(Project& project, ItemId id, std::string name) : Item(project, id, ItemType::comp, std::move(name)) {}

Comp::~Comp() = default;

Layer& Comp::layer_at(int index) const {
    if (index < 0 || index >= layer_count()) throw Error(ErrorKind::bad_argument, "There is no layer of that index.");
    return *stack_.at(index);
}

Layer* Comp::layer_named(std::string_view display_name) const {
    if (names_ == nullptr) names_ = std::make_unique<LayerNames>(stack_);
    return names_->topmost(display_name);
}

Time Comp::frame_duration() const {
    return from_seconds(frame_rate_ > 0 ? 1 / frame_rate_ : 1.0 / 30);
}

std::int64_t Comp::time_scale() const {
    return time_scale_override_ != 0 ? time_scale_override_ : project().rules().time_scale;
}

// Searches upwards, because most compositions are used in few places.
bool Comp::contains(const Comp& other) const {
    std::vector<const Comp*> open = {&other};
    std::unordered_set<const Comp*> seen = {&other};
    while (!open.empty()) {
        const Comp* comp = open.back();
        open.pop_back();
        if (comp == this) return true;
        for (const auto& [user_id, count] : comp->using_comps_) {
            const Comp* user = project().items_by_id_.find(user_id)->comp();
            if (seen.insert(user).second) open.push_back(user);
        }
    }
    return false;
}

// Adding to and removing from the stack

void Comp::enter(Layer& layer, int index) {
    project().note_change(*this);
    layer.stack_node_ = stack_.insert(index, &layer);
    layer.alive_ = true;
    layer.link_to_source();
    if (layer.state_.parent != nullptr) {
        Layer::link(layer.state_.parent->mutable_extras().children, layer, &Layer::place_in_children_);
    }
    if (layer.state_.matte != nullptr) {
        Layer::link(layer.state_.matte->mutable_extras().matte_users, layer, &Layer::place_in_matte_users_);
    }
    if (names_ != nullptr) names_->add(layer);
    if (layer.awaits_loading()) layer.set_content(layer.content_);
    has_mattes_above_ = has_mattes_above_ || layer.state_.is_matte_above;
    renew_matte(index);
    renew_matte(index + 1);
}

void Comp::leave(Layer& layer) {
    project().note_change(*this);
    set_selection_rank(layer, 0);
    if (names_ != nullptr) names_->remove(layer);
    if (layer.state_.parent != nullptr) {
        Layer::unlink(layer.state_.parent->mutable_extras().children, layer, &Layer::place_in_children_);
    }
    if (layer.state_.matte != nullptr) {
        Layer::unlink(layer.state_.matte->mutable_extras().matte_users, layer, &Layer::place_in_matte_users_);
    }
    layer.unlink_from_source();
    const int index = layer.index();
    layer.alive_ = false;
    stack_.erase(layer.stack_node_);
    layer.stack_node_ = nullptr;
    renew_matte(index);
}

// The layer there takes the one that is above it now, if that is how it has a matte.
void Comp::renew_matte(int index) {
    if (!has_mattes_above_ || index >= layer_count()) return;
    Layer& layer = *stack_.at(index);
    if (layer.takes_matte_by_position())
        layer.change_matte(index > 0 ? stack_.at(index - 1) : nullptr, layer.matte_type());
}

Layer& Comp::make_layer(LayerKind kind, Item* source) {
    owned_.push_back(std::make_unique<Layer>(*this, project().next_layer_id(), kind, source));
    project().layers_by_id_.add(*owned_.back());
    return *owned_.back();
}

void Comp::add_undoably(Layer& layer, int index) {
    project().expressions().note_failures();
    enter(layer, index);
    project().undo().note([this, &layer] { leave(layer); });
    layer.attach_all();
    project().expressions().note_failures();
}

void Comp::load_layer_parameters() {
    while (!unloaded_layer_parameters_.empty()) {
        Layer& layer = *unloaded_layer_parameters_.back();
        if (layer.is_alive()) layer.ensure_loaded();
        unloaded_layer_parameters_.pop_back();
    }
}

Layer& Comp::load_layer(LayerKind kind, Item* source) {
    Layer& layer = make_layer(kind, source);
    enter(layer, layer_count());
    return layer;
}

// New layers

Layer& Comp::add_layer(Item& source) {
    require_alive();
    source.require_alive();
    if (source.type() == ItemType::folder)
        throw Error(ErrorKind::bad_argument, "A folder cannot be the source of a layer.");
    if (source.comp() != nullptr && source.comp()->contains(*this)) {
        throw Error(ErrorKind::bad_argument, "A composition cannot contain itself.");
    }
    const UndoScope scope(project().undo());
    Layer& layer = make_layer(LayerKind::av, &source);
    Time duration = duration_;
    if (source.comp() != nullptr && source.comp()->duration() > Time{}) {
        duration = std::min(duration, source.comp()->duration());
    } else if (source.footage().has_duration) {
        duration = std::min(duration, source.footage().duration);
    }
    layer.load_timing({}, {}, duration, 1);
    layer.set_own_stream(kAnchorPoint, {{source.width() / 2.0, source.height() / 2.0, 0, 0}});
    layer.set_own_stream(kPosition, {{width() / 2.0, height() / 2.0, 0, 0}});
    add_undoably(layer, 0);
    return layer;
}

Layer& Comp::create_null(const std::string& name, Time duration) {
    require_alive();
    const HostRules& rules = project().rules();
    const UndoScope scope(project().undo());
    FootageFacts facts;
    facts.is_solid = true;
    facts.color = {rules.null_color[0], rules.null_color[1], rules.null_color[2], 1};
    Item& source = project().add_footage(name, facts, rules.null_size, rules.null_size, &project().solids_folder());
    Layer& layer = make_layer(LayerKind::av, &source);
    if (rules.null_layer_gets_own_name) layer.load_name(name);
    layer.load_flags(kVideoActive | kEffectsActive | kIsNull);
    layer.load_timing({}, {}, duration > Time{} ? duration : duration_, 1);
    layer.set_own_stream(kAnchorPoint, {});
    layer.set_own_stream(kPosition, {{width() / 2.0, height() / 2.0, 0, 0}});
    layer.set_own_stream(kOpacity, {{rules.null_opacity, 0, 0, 0}});
    add_undoably(layer, 0);
    if (rules.new_null_is_selected) select({&layer});
    return layer;
}

// Selection

std::vector<Layer*> Comp::selected_layers() const {
    std::vector<Layer*> layers;
    layers.reserve(selection_.size());
    for (const auto& [rank, layer] : selection_) layers.push_back(layer);
    if (project().rules().selection_order == SelectionOrder::top_to_bottom) {
        std::vector<std::pair<int, Layer*>> by_index;
        by_index.reserve(layers.size());
        for (Layer* layer : layers) by_index.emplace_back(layer->index(), layer);
        std::sort(by_index.begin(), by_index.end());
        for (std::size_t i = 0; i < layers.size(); ++i) layers[i] = by_index[i].second;
    }
    return layers;
}

void Comp::set_selection_rank(Layer& layer, std::uint64_t rank) {
    if (layer.selection_rank_ != 0) selection_.erase(layer.selection_rank_);
    layer.selection_rank_ = rank;
    if (rank != 0) selection_[rank] = &layer;
    stack_.mark(layer.stack_node_, rank != 0);
}

void Comp::replace_selection(Selection selection) {
    while (!selection_.empty()) set_selection_rank(*selection_.begin()->second, 0);
    for (const auto& [rank, layer] : selection) set_selection_rank(*layer, rank);
}

void Comp::select(const std::vector<Layer*>& layers) {
    Selection next;
    std::unordered_set<const Layer*> seen;
    for (Layer* layer : layers) {
        if (layer == nullptr || !layer->is_alive() || &layer->comp() != this) {
            throw Error(ErrorKind::bad_argument, "Only living layers of the composition can be selected in it.");
        }
        if (seen.insert(layer).second) next[++last_selection_rank_] = layer;
    }
    project().undo().note_beside([this, old = selection_] { replace_selection(old); });
    replace_selection(std::move(next));
}

}  // namespace host::model
