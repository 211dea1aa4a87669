// The project: items, effects that are installed, what is active and selected, undo, rules.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/comp.h"
#include "model/effect.h"
#include "model/host_rules.h"
#include "model/item.h"
#include "model/undo.h"

namespace host::model {

class ExpressionIndex;

// Which panel the user works in; it decides what "active" and "selected" mean.
enum class ActivePanel { none, timeline, project };

class Project {
  public:
    explicit Project(HostRules rules = {});
    ~Project();
    Project(const Project&) = delete;

    const HostRules& rules() const { return rules_; }
    HostRules& rules() { return rules_; }
    UndoJournal& undo() { return undo_; }

    // Items
    Item& root_folder() const { return *root_; }
    // The item after `item` in the walk that goes through every folder depth first, a folder before its contents; null at
    // the end. The walk starts with the root folder.
    Item* next_item(const Item& item) const;
    int item_count() const;            // without the root folder
    Item& item_by_number(int n) const;  // 1-based place in that walk, the root folder being 0; throws bad_argument
    Item* item_by_id(ItemId id) const;  // living ones; null if none
    Comp& add_comp(std::string name, Item* folder = nullptr);  // null folder = root
    Item& add_folder(std::string name, Item* folder = nullptr);
    Item& add_footage(std::string name, const FootageFacts& facts, int width, int height, Item* folder = nullptr);
    // Removes the item and every layer that uses it, in every composition; a folder with its contents. Undoable.
    // Throws bad_argument for the root folder.
    void delete_item(Item& item);
    std::vector<Comp*> comps() const;  // living, in walk order

    // Effects
    std::shared_ptr<const EffectKind> install_effect(EffectKind kind);  // gives it its key
    std::shared_ptr<const EffectKind> effect_kind(int key) const;       // null if unknown

    // What the user looks at
    ActivePanel active_panel() const { return panel_; }
    void set_active_panel(ActivePanel panel) { panel_ = panel; }
    void open_comp(Comp* comp) { open_comp_ = comp; }  // the one in the Timeline panel
    void select_items(std::vector<Item*> items) { selected_items_ = std::move(items); }
    Item* active_item() const;                      // null if none or several
    bool is_item_selected(const Item& item) const;  // only while the Project panel is active

    // Expressions
    // Broken expressions that quote `old_name` get `new_name` there, if they then work. Undoable.
    void auto_fix_expressions(std::string_view old_name, std::string_view new_name);

    LayerId next_layer_id() { return ++last_layer_id_; }
    Layer* layer_by_id(LayerId id) const;  // living ones; null if none

  private:
    friend class Layer;
    friend class Comp;
    friend class Stream;

    HostRules rules_;
    UndoJournal undo_;
    std::vector<std::unique_ptr<Item>> owned_items_;
    Item* root_ = nullptr;
    std::unordered_map<ItemId, Item*> items_by_id_;
    std::unordered_map<LayerId, Layer*> layers_by_id_;
    std::vector<std::shared_ptr<const EffectKind>> effect_kinds_;
    std::unique_ptr<ExpressionIndex> expressions_;
    mutable std::vector<Item*> walk_;  // empty when it must be made anew
    mutable std::unordered_map<const Item*, int> walk_numbers_;
    ActivePanel panel_ = ActivePanel::timeline;
    Comp* open_comp_ = nullptr;
    std::vector<Item*> selected_items_;
    ItemId last_item_id_ = 0;
    LayerId last_layer_id_ = 0;
};

}  // namespace host::model
