// The project: items, installed effects, active item and selection, undo, rules.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "model/by_id.h"
#include "model/comp.h"
#include "model/effect.h"
#include "model/host_rules.h"
#include "model/item.h"
#include "model/sequence.h"
#include "model/undo.h"

namespace host::model {

class ExpressionIndex;
class LayerParameterIndex;
class StillData;

// The panel in use, which decides what "active" and "selected" mean.
enum class ActivePanel { none, timeline, project };

class Project {
  public:
    explicit Project(HostRules rules = {});
    ~Project();
    Project(const Project&) = delete;
    Project& operator=(const Project&) = delete;

    const HostRules& rules() const { return rules_; }
    HostRules& rules() { return rules_; }
    UndoJournal& undo() { return undo_; }

    // Items
    Item& root_folder() const { return *root_; }
    // The next item depth first, folders before their contents; null at the end. The root folder is first. Throws
    // bad_argument for a dead item.
    Item* next_item(const Item& item) const;
    int item_count() const;                 // without the root folder
    Item& item_by_number(int n) const;      // its place in that order, the root folder being 0; throws bad_argument
    int number_of(const Item& item) const;  // throws bad_argument for a dead item
    Item* item_by_id(ItemId id) const {     // null if there is none alive
        Item* item = items_by_id_.find(id);
        return item != nullptr && item->is_alive() ? item : nullptr;
    }
    Comp* comp_named(std::string_view name) const;             // the oldest if there are several, null if none
    bool has_deleted_comp_named(std::string_view name) const;  // and not brought back by undo
    // Undoable; a reader clears the undo journal when the project is built.
    Comp& add_comp(std::string name, Item* folder = nullptr);  // null folder = root
    Item& add_folder(std::string name, Item* folder = nullptr);
    Item& add_footage(std::string name, const FootageFacts& facts, int width, int height, Item* folder = nullptr);
    // Deletes the item, a folder's contents, and every layer that uses it. Undoable. Throws bad_argument for the root
    // folder.
    void delete_item(Item& item);
    std::vector<Comp*> comps() const;  // alive, in the order of next_item()

    // Effects
    std::shared_ptr<const EffectKind> install_effect(EffectKind kind);  // assigns its key
    std::shared_ptr<const EffectKind> effect_kind(int key) const;       // null if unknown

    // Panels and selection
    void set_active_panel(ActivePanel panel) { panel_ = panel; }
    void open_comp(Comp* comp) { open_comp_ = comp; }  // the one in the Timeline panel
    Comp* open_comp() const;                           // null if none or deleted
    void select_items(std::vector<Item*> items);
    Item* active_item() const;                      // null if none or several
    bool is_item_selected(const Item& item) const;  // only in the Project panel

    // Expressions
    // Replaces `old_name` in broken expressions by `new_name` if that repairs them. Undoable.
    void auto_fix_expressions(std::string_view old_name, std::string_view new_name);

    // Items that changed, compositions also in their layers, since this was last asked, going back counting as a change
    // too; some may be as they were. From the first call on they are noted, so that call gives none.
    std::vector<Item*> take_changed_items();

    // For readers: stream data without keyframes or expression, shared by streams of equal value.
    std::shared_ptr<const StreamData> still_data(const Value& value);

    LayerId next_layer_id() { return ++last_layer_id_; }
    LayerId newest_layer_id() const { return last_layer_id_; }  // 0 before the first layer
    Layer* layer_by_id(LayerId id) const;                       // null if there is none alive

  private:
    friend class Comp;
    friend class Effect;
    friend class ExpressionIndex;
    friend class Item;
    friend class Layer;
    friend class Stream;

    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>()(name); }
    };

    void note_change(Item& item) {
        if (notes_changes_) changed_items_.insert(&item);
    }
    ExpressionIndex& expressions() { return *expressions_; }
    LayerParameterIndex& layer_parameters() { return *layer_parameters_; }
    Item& add_item(std::unique_ptr<Item> item, Item* folder);
    void enter(Item& item, int walk_index);  // not undoable
    void leave(Item& item);
    void leave_undoably(Item& item);
    void add_comp_name(Comp& comp);
    void remove_comp_name(const Comp& comp);
    Item& solids_folder();

    HostRules rules_;
    UndoJournal undo_{&rules_};
    std::vector<std::unique_ptr<Item>> owned_items_;
    Item* root_ = nullptr;
    Item* solids_folder_ = nullptr;  // the last one found or created
    ById<Item> items_by_id_;         // including dead ones
    ById<Layer> layers_by_id_;
    std::unordered_map<std::string, std::map<ItemId, Comp*>, NameHash, std::equal_to<>> comps_by_name_;
    std::unordered_map<std::string, int, NameHash, std::equal_to<>> deleted_comp_names_;  // count by name
    std::vector<std::shared_ptr<const EffectKind>> effect_kinds_;
    std::vector<std::unique_ptr<Effect>> retired_effects_;  // removed by undo; handles may still refer to them
    std::unique_ptr<ExpressionIndex> expressions_;
    std::unique_ptr<LayerParameterIndex> layer_parameters_;
    std::unique_ptr<StillData> still_data_;
    Sequence<Item> walk_;
    ActivePanel panel_ = ActivePanel::timeline;
    Comp* open_comp_ = nullptr;
    std::vector<Item*> selected_items_;
    std::unordered_set<const Item*> is_selected_;
    std::unordered_set<Item*> changed_items_;
    bool notes_changes_ = false;
    ItemId last_item_id_ = 0;
    LayerId last_layer_id_ = 0;
    std::uint64_t last_stream_serial_ = 0;
};

}  // namespace host::model
