// Layers: parents, mattes and sources, and the lists of their users.
#include "model/comp.h"
#include "model/error.h"
#include "model/layer.h"
#include "model/project.h"
#include "model/transform.h"

namespace host::model {

void Layer::link(std::vector<Layer*>& list, Layer& layer, ListPosition position) {
    layer.*position = static_cast<std::uint32_t>(list.size());
    list.push_back(&layer);
}

// Moves the last element into the gap.
void Layer::unlink(std::vector<Layer*>& list, Layer& layer, ListPosition position) {
    Layer* last = list.back();
    list[layer.*position] = last;
    last->*position = layer.*position;
    list.pop_back();
}

void Layer::change_parent(Layer* parent) {
    if (parent == state_.parent) return;
    if (state_.parent != nullptr && alive_)
        unlink(state_.parent->mutable_extras().children, *this, &Layer::place_in_children_);
    state_.parent = parent;
    if (parent != nullptr && alive_) link(parent->mutable_extras().children, *this, &Layer::place_in_children_);
}

void Layer::change_matte(Layer* matte, MatteType type) {
    state_.matte_type = type;
    if (matte == state_.matte) return;
    if (state_.matte != nullptr && alive_)
        unlink(state_.matte->mutable_extras().matte_users, *this, &Layer::place_in_matte_users_);
    state_.matte = matte;
    if (matte != nullptr && alive_) link(matte->mutable_extras().matte_users, *this, &Layer::place_in_matte_users_);
}

void Layer::link_to_source() {
    if (source_ == nullptr) return;
    link(source_->users_, *this, &Layer::place_in_source_users_);
    if (Comp* nested = source_->comp()) ++nested->using_comps_[comp_->id()];
}

void Layer::unlink_from_source() {
    if (source_ == nullptr) return;
    unlink(source_->users_, *this, &Layer::place_in_source_users_);
    if (Comp* nested = source_->comp()) {
        const auto count = nested->using_comps_.find(comp_->id());
        if (--count->second == 0) nested->using_comps_.erase(count);
    }
}

void Layer::require_possible_parent(const Layer& parent) const {
    if (&parent == this) throw Error(ErrorKind::bad_argument, "A layer cannot be its own parent.");
    if (!parent.is_alive()) throw Error(ErrorKind::bad_argument, "The parent has been deleted.");
    if (parent.comp_ != comp_) throw Error(ErrorKind::bad_argument, "A parent has to be in the same composition.");
    if (children().empty()) return;
    for (const Layer* above = parent.parent(); above != nullptr; above = above->parent()) {
        if (above == this)
            throw Error(ErrorKind::bad_argument, "A layer cannot have one of its descendants as parent.");
    }
}

void Layer::set_parent(Layer* parent, Parenting parenting) {
    require_editable();
    if (parent == state_.parent) return;
    if (parent != nullptr) require_possible_parent(*parent);
    reparent(parent, parenting);
}

void Layer::reparent(Layer* parent, Parenting parenting) {
    const UndoScope scope(project().undo());
    if (parenting == Parenting::keep_place) compensate_for_parent(*this, parent);
    writable_state();
    change_parent(parent);
}

void Layer::load_parent(Layer* parent) {
    if (parent != nullptr) require_possible_parent(*parent);
    change_parent(parent);
}

void Layer::load_matte(Layer* matte, MatteType type) {
    change_matte(matte, type);
    state_.is_matte_above = matte != nullptr && matte->index() + 1 == index();
    comp_->has_mattes_above_ = comp_->has_mattes_above_ || state_.is_matte_above;
}

bool Layer::takes_matte_by_position() const {
    return state_.is_matte_above && project().rules().mattes_by_position;
}

}  // namespace host::model
