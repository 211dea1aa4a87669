// Layers: identity, names, switches, removal and moves, undo of everything but streams.
#include "model/layer.h"

#include "expressions/expression_index.h"
#include "expressions/expression_rewrite.h"
#include "layers/layer_names.h"
#include "layers/layer_parameter_index.h"
#include "model/comp.h"
#include "model/error.h"
#include "model/project.h"

namespace host::model {

Layer::Layer(Comp& comp, LayerId id, LayerKind kind, Item* source)
    : comp_(&comp), id_(id), kind_(kind), source_(source) {}

Layer::~Layer() = default;

Project& Layer::project() const {
    return comp_->project();
}

int Layer::index() const {
    require_alive();
    return LayerStack::index_of(stack_node_);
}

const Layer::Extras& Layer::extras() const {
    static const Extras kNone;
    return extras_ != nullptr ? *extras_ : kNone;
}

Layer::Extras& Layer::mutable_extras() {
    if (extras_ == nullptr) extras_ = std::make_unique<Extras>();
    return *extras_;
}

void Layer::require_alive() const {
    if (!alive_) throw Error(ErrorKind::bad_argument, "The layer has been deleted.");
}

void Layer::require_editable() const {
    require_alive();
    if (has_flag(kLocked) && project().rules().locked_layers_refuse_edits) {
        throw Error(ErrorKind::not_allowed, "The layer \"" + display_name() + "\" is locked.");
    }
}

// Undo

void Layer::note_change() {
    ++change_count_;
    project().note_change(*comp_);
}

Layer::State& Layer::writable_state() {
    note_change();
    UndoJournal& journal = project().undo();
    const std::uint64_t step = journal.step_for_snapshot();
    if (touched_in_step_ != step) {
        touched_in_step_ = step;
        journal.note([this, old = state_] { restore_state(old); });
    }
    return state_;
}

void Layer::restore_state(const State& state) {
    note_change();
    change_parent(state.parent);
    change_matte(state.matte, state.matte_type);
    if (state.name != state_.name) change_display_name(state.name);
    state_ = state;
    if (alive_) comp_->renew_matte(index());
}

// Names

const std::string& Layer::source_name() const {
    static const std::string kNone;
    return source_ != nullptr ? source_->name() : kNone;
}

const std::string& Layer::display_name() const {
    return state_.name.empty() ? source_name() : state_.name;
}

void Layer::change_display_name(std::string own_name) {
    const bool is_listed = alive_ && comp_->names_ != nullptr;
    if (is_listed) comp_->names_->remove(*this);
    state_.name = std::move(own_name);
    if (is_listed) comp_->names_->add(*this);
}

void Layer::rename(std::string name) {
    require_editable();
    if (name == state_.name) return;
    const UndoScope scope(project().undo());
    ExpressionIndex& expressions = project().expressions();
    expressions.note_failures();
    const std::string old_name = display_name();
    std::vector<Stream*> streams = expressions.streams_naming(*comp_, old_name);
    if (!streams.empty() && comp_->layer_named(old_name) != this) streams.clear();
    writable_state();
    change_display_name(std::move(name));
    if (display_name() == old_name) return;
    rewrite_layer_name(streams, *comp_, old_name, display_name());
    expressions.note_failures_after_loss(*comp_, old_name);
}

void Layer::load_name(std::string name) {
    change_display_name(std::move(name));
}

// Switches

bool Layer::is_3d() const {
    return kind_ == LayerKind::camera || kind_ == LayerKind::light || has_flag(kIs3D);
}

void Layer::set_flag(LayerFlag flag, bool on) {
    if (flag == kLocked) {
        require_alive();
    } else {
        require_editable();
    }
    const bool has_no_dimensions_to_choose = kind_ == LayerKind::camera || kind_ == LayerKind::light;
    if (has_flag(flag) == on || (flag == kIs3D && has_no_dimensions_to_choose)) return;
    const UndoScope scope(project().undo());
    // In both directions: what a 2D layer keeps hidden must not reappear.
    if (flag == kIs3D) drop_third_dimension();
    State& state = writable_state();
    state.flags = on ? state.flags | flag : state.flags & ~std::uint32_t{flag};
}

// Whole-layer changes

// Removes all references to the layer.
void Layer::release_dependents() {
    const Parenting parenting =
        project().rules().deleting_a_parent_compensates ? Parenting::keep_place : Parenting::keep_local_values;
    const std::vector<Layer*> children = this->children();
    if (parenting == Parenting::keep_place && !children.empty()) {
        // Loading can fail, so it comes before any change.
        for (Layer* child : children) child->ensure_loaded();
        for (Layer* above = this; above != nullptr; above = above->parent()) above->ensure_loaded();
    }
    for (Layer* child : children) child->reparent(nullptr, parenting);
    const std::vector<Layer*> users = matte_users();
    for (Layer* user : users) {
        if (user->takes_matte_by_position()) continue;
        user->writable_state();
        user->change_matte(nullptr, MatteType::none);
    }
    for (Stream* stream : project().layer_parameters().streams_naming(id_)) {
        const auto without = [this](LayerId id) { return id == id_ ? 0 : id; };
        StreamData& data = stream->writable();
        data = *with_mapped_layers(stream->data_, without);
        stream->changed(false);
    }
}

void Layer::leave_comp() {
    const UndoScope scope(project().undo());
    comp_->load_layer_parameters();
    project().expressions().note_failures();
    release_dependents();
    const std::string name = display_name();
    project().undo().note([this, index = index(), rank = selection_rank_] {
        comp_->enter(*this, index);
        comp_->set_selection_rank(*this, rank);
    });
    comp_->leave(*this);
    project().expressions().note_failures_after_loss(*comp_, name);
}

void Layer::remove() {
    require_editable();
    leave_comp();
}

void Layer::move_to(int index) {
    require_editable();
    const int last = comp_->layer_count() - 1;
    if (index < -1) throw Error(ErrorKind::bad_argument, "A layer's index is not negative.");
    const int final_index = index == -1 || index > last ? last : index;
    const int old_index = this->index();
    if (final_index == old_index) return;
    const auto move = [this](int to) {
        note_change();
        if (comp_->names_ != nullptr) comp_->names_->remove(*this);
        const int from = this->index();
        comp_->stack_.move(stack_node_, to);
        for (const int place : {from, from + 1, to, to + 1}) comp_->renew_matte(place);
        if (comp_->names_ != nullptr) comp_->names_->add(*this);
    };
    project().undo().note([move, old_index] { move(old_index); });
    move(final_index);
}

}  // namespace host::model
