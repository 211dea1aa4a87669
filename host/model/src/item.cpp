// Items: names and folders.
#include "model/item.h"

#include "expressions/expression_index.h"
#include "expressions/expression_rewrite.h"
#include "layers/layer_names.h"
#include "model/comp.h"
#include "model/error.h"
#include "model/project.h"

namespace host::model {

Item::Item(Project& project, ItemId id, ItemType type, std::string name)
    : project_(&project), id_(id), type_(type), name_(std::move(name)) {}

Item::~Item() = default;

void Item::require_alive() const {
    if (!alive_) throw Error(ErrorKind::bad_argument, "The item has been deleted.");
}

Comp* Item::comp() {
    return type_ == ItemType::comp ? static_cast<Comp*>(this) : nullptr;
}

std::vector<Item*> Item::folder_contents() const {
    std::vector<Item*> all;
    all.reserve(contents_.size());
    for (const auto& [id, item] : contents_) all.push_back(item);
    return all;
}

void Item::change_name(std::string name) {
    project_->note_change(*this);
    std::vector<Layer*> renamed;
    for (Layer* layer : users_) {
        if (layer->own_name().empty() && layer->comp().names_ != nullptr) renamed.push_back(layer);
    }
    for (Layer* layer : renamed) layer->comp().names_->remove(*layer);
    if (alive_ && comp() != nullptr) project_->remove_comp_name(*comp());
    name_ = std::move(name);
    if (alive_ && comp() != nullptr) project_->add_comp_name(*comp());
    for (Layer* layer : renamed) layer->comp().names_->add(*layer);
}

void Item::set_name(std::string name) {
    require_alive();
    if (name == name_) return;
    const UndoScope scope(project_->undo());
    ExpressionIndex& expressions = project_->expressions();
    expressions.note_failures();

    // Expressions refer to the topmost layer of a name: in each composition at most one user.
    struct Affected {
        Comp* comp;
        std::vector<Stream*> streams;
    };
    std::vector<Affected> affected;
    std::map<ItemId, Comp*> using_comps;
    for (const Layer* layer : users_) using_comps.emplace(layer->comp().id(), &layer->comp());
    for (const auto& [comp_id, comp_of_users] : using_comps) {
        const Layer* layer = comp_of_users->layer_named(name_);
        if (layer == nullptr || layer->source() != this || !layer->own_name().empty()) continue;
        affected.push_back({comp_of_users, expressions.streams_naming(*comp_of_users, name_)});
    }
    std::vector<Stream*> naming_comp;
    if (comp() != nullptr && project_->comp_named(name_) == comp())
        naming_comp = expressions.streams_naming_comp(name_);

    const std::string old_name = name_;
    project_->undo().note([this, old_name] { change_name(old_name); });
    change_name(std::move(name));
    for (const Affected& each : affected) {
        rewrite_layer_name(each.streams, *each.comp, old_name, name_);
        expressions.note_failures_after_loss(*each.comp, old_name);
    }
    rewrite_comp_name(naming_comp, old_name, name_);
}

void Item::set_pixel_aspect(PixelAspect aspect) {
    require_alive();
    if (aspect == aspect_) return;
    project_->undo().note([this, old = aspect_] { aspect_ = old; });
    aspect_ = aspect;
}

}  // namespace host::model
