// The project: items and their order, installed effects, selection, repair of expressions.
#include "model/project.h"

#include "expressions/expression_index.h"
#include "expressions/expression_rewrite.h"
#include "layers/layer_parameter_index.h"
#include "model/error.h"
#include "streams/still_data.h"

namespace host::model {

Project::Project(HostRules rules)
    : rules_(std::move(rules)),
      expressions_(std::make_unique<ExpressionIndex>(*this)),
      layer_parameters_(std::make_unique<LayerParameterIndex>()),
      still_data_(std::make_unique<StillData>()) {
    owned_items_.push_back(std::make_unique<Item>(*this, ++last_item_id_, ItemType::folder, "Root"));
    root_ = owned_items_.back().get();
    items_by_id_.add(*root_);
    root_->alive_ = true;
    root_->walk_node_ = walk_.insert(0, root_);
}

Project::~Project() = default;

// Items in order

Item* Project::next_item(const Item& item) const {
    item.require_alive();
    return Sequence<Item>::next(item.walk_node_);
}

int Project::item_count() const {
    return walk_.size() - 1;
}

Item& Project::item_by_number(int n) const {
    if (n < 1 || n > item_count()) throw Error(ErrorKind::bad_argument, "There is no item of that number.");
    return *walk_.at(n);
}

int Project::number_of(const Item& item) const {
    item.require_alive();
    return Sequence<Item>::index_of(item.walk_node_);
}

Layer* Project::layer_by_id(LayerId id) const {
    Layer* layer = layers_by_id_.find(id);
    return layer != nullptr && layer->is_alive() ? layer : nullptr;
}

Comp* Project::comp_named(std::string_view name) const {
    const auto found = comps_by_name_.find(name);
    return found != comps_by_name_.end() ? found->second.begin()->second : nullptr;
}

bool Project::has_deleted_comp_named(std::string_view name) const {
    const auto found = deleted_comp_names_.find(name);
    return found != deleted_comp_names_.end() && found->second > 0;
}

std::vector<Comp*> Project::comps() const {
    std::vector<Comp*> all;
    for (Item* item : walk_.to_vector()) {
        if (Comp* comp = item->comp()) all.push_back(comp);
    }
    return all;
}

void Project::add_comp_name(Comp& comp) {
    comps_by_name_[comp.name()][comp.id()] = &comp;
}

void Project::remove_comp_name(const Comp& comp) {
    const auto found = comps_by_name_.find(comp.name());
    found->second.erase(comp.id());
    if (found->second.empty()) comps_by_name_.erase(found);
}

// Adding and deleting items

void Project::enter(Item& item, int walk_index) {
    note_change(item);
    item.walk_node_ = walk_.insert(walk_index, &item);
    item.folder_->contents_[item.id()] = &item;
    item.alive_ = true;
    if (Comp* comp = item.comp()) add_comp_name(*comp);
}

void Project::leave(Item& item) {
    note_change(item);
    if (Comp* comp = item.comp()) remove_comp_name(*comp);
    item.alive_ = false;
    item.folder_->contents_.erase(item.id());
    walk_.erase(item.walk_node_);
    item.walk_node_ = nullptr;
}

Item& Project::add_item(std::unique_ptr<Item> item, Item* folder) {
    if (folder == nullptr) folder = root_;
    folder->require_alive();
    if (folder->type() != ItemType::folder) throw Error(ErrorKind::bad_argument, "Only a folder has items inside.");
    Item& added = *item;
    added.folder_ = folder;
    items_by_id_.add(added);
    owned_items_.push_back(std::move(item));

    const Item* last_inside = folder;
    while (!last_inside->contents_.empty()) last_inside = last_inside->contents_.rbegin()->second;
    enter(added, Sequence<Item>::index_of(last_inside->walk_node_) + 1);
    undo_.note([this, &added] { leave(added); });
    return added;
}

Comp& Project::add_comp(std::string name, Item* folder) {
    const UndoScope scope(undo_);
    expressions_->note_failures();
    return *add_item(std::make_unique<Comp>(*this, ++last_item_id_, std::move(name)), folder).comp();
}

Item& Project::add_folder(std::string name, Item* folder) {
    return add_item(std::make_unique<Item>(*this, ++last_item_id_, ItemType::folder, std::move(name)), folder);
}

Item& Project::add_footage(std::string name, const FootageFacts& facts, int width, int height, Item* folder) {
    auto item = std::make_unique<Item>(*this, ++last_item_id_, ItemType::footage, std::move(name));
    item->load_footage(facts);
    item->load_size(width, height);
    return add_item(std::move(item), folder);
}

// The folder for the sources of solids and nulls, created on demand in the root folder.
Item& Project::solids_folder() {
    const auto fits = [this](const Item* item) {
        return item->is_alive() && item->type() == ItemType::folder && item->name() == rules_.solids_folder_name;
    };
    if (solids_folder_ != nullptr && fits(solids_folder_)) return *solids_folder_;
    solids_folder_ = nullptr;
    for (const auto& [id, item] : root_->contents_) {
        if (fits(item)) {
            solids_folder_ = item;
            break;
        }
    }
    if (solids_folder_ == nullptr) solids_folder_ = &add_folder(rules_.solids_folder_name);
    return *solids_folder_;
}

std::vector<Item*> Project::take_changed_items() {
    notes_changes_ = true;
    const std::vector<Item*> items(changed_items_.begin(), changed_items_.end());
    changed_items_.clear();
    return items;
}

void Project::leave_undoably(Item& item) {
    if (Comp* comp = item.comp()) {
        // Its layers keep their links to one another but cannot be found.
        const std::vector<Layer*> layers = comp->stack().to_vector();
        const auto set_alive = [](const std::vector<Layer*>& all, bool alive) {
            for (Layer* layer : all) {
                layer->alive_ = alive;
                if (alive) {
                    layer->link_to_source();
                    if (layer->awaits_loading()) layer->set_content(layer->content_);
                } else {
                    layer->unlink_from_source();
                }
            }
        };
        set_alive(layers, false);
        ++deleted_comp_names_[comp->name()];
        undo_.note([this, comp, set_alive, layers] {
            set_alive(layers, true);
            --deleted_comp_names_[comp->name()];
        });
    }
    undo_.note([this, &item, place = number_of(item)] { enter(item, place); });
    leave(item);
    if (item.comp() != nullptr) expressions_->note_failures_after_comp_loss(item.name());
}

void Project::delete_item(Item& item) {
    item.require_alive();
    if (&item == root_) throw Error(ErrorKind::bad_argument, "The root folder cannot be deleted.");
    const UndoScope scope(undo_);
    for (Item* inside : item.folder_contents()) delete_item(*inside);
    const std::vector<Layer*> users = item.users();
    for (Layer* layer : users) layer->leave_comp();
    expressions_->note_failures();
    leave_undoably(item);
}

// Effects

std::shared_ptr<const EffectKind> Project::install_effect(EffectKind kind) {
    kind.key = static_cast<int>(effect_kinds_.size()) + 1;
    effect_kinds_.push_back(std::make_shared<const EffectKind>(std::move(kind)));
    return effect_kinds_.back();
}

std::shared_ptr<const EffectKind> Project::effect_kind(int key) const {
    if (key < 1 || static_cast<std::size_t>(key) > effect_kinds_.size()) return nullptr;
    return effect_kinds_[static_cast<std::size_t>(key) - 1];
}

std::shared_ptr<const StreamData> Project::still_data(const Value& value) {
    return still_data_->of(value);
}

// Panels and selection

Comp* Project::open_comp() const {
    return open_comp_ != nullptr && open_comp_->is_alive() ? open_comp_ : nullptr;
}

void Project::select_items(std::vector<Item*> items) {
    selected_items_ = std::move(items);
    is_selected_ = {selected_items_.begin(), selected_items_.end()};
}

Item* Project::active_item() const {
    if (panel_ == ActivePanel::timeline) return open_comp();
    if (panel_ == ActivePanel::none) return nullptr;
    Item* active = nullptr;
    for (Item* item : selected_items_) {
        if (!item->is_alive()) continue;
        if (active != nullptr) return nullptr;
        active = item;
    }
    return active;
}

bool Project::is_item_selected(const Item& item) const {
    return panel_ == ActivePanel::project && item.is_alive() && is_selected_.count(&item) != 0;
}

// Expressions

void Project::auto_fix_expressions(std::string_view old_name, std::string_view new_name) {
    if (old_name.empty() || old_name == new_name) return;
    const UndoScope scope(undo_);
    // An expression that no longer names an existing composition would only look repaired.
    const auto comps_missing = [this](std::string_view text) {
        int missing = 0;
        for (const LayerReference& reference : find_layer_references(text)) {
            if (reference.comp_end != 0 && comp_named(reference.comp) == nullptr) ++missing;
        }
        return missing;
    };
    for (Stream* stream : expressions_->broken_streams_naming(std::string(old_name))) {
        const std::string& text = stream->data().expression;
        std::string fixed = with_quoted_replaced(text, old_name, new_name);
        if (fixed == text || names_missing_layer(stream->owner(), fixed)) continue;
        if (comps_missing(fixed) > comps_missing(text)) continue;
        stream->replace_expression_text(std::move(fixed));
    }
}

}  // namespace host::model
