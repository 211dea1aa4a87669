// Project items: folders, compositions, footage.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "model/format_data.h"
#include "model/sequence.h"
#include "model/time.h"

namespace host::model {

class Comp;
class Layer;
class Project;

using ItemId = std::int32_t;  // from 1, never reused

enum class ItemType { folder = 1, comp = 2, footage = 4 };

struct PixelAspect {
    std::int32_t num = 1;
    std::uint32_t den = 1;
    friend bool operator==(const PixelAspect&, const PixelAspect&) = default;
};

struct FootageFacts {
    bool is_solid = false;
    std::array<double, 4> color{};  // solids: red, green, blue, alpha in 0..1
    bool has_duration = false;      // moving footage, beyond which layers cannot be trimmed
    Time duration;                  // if it has one
};

// Objects stay in memory after deletion, since undo or a handle may still refer to them; see is_alive().
class Item {
  public:
    Item(Project& project, ItemId id, ItemType type, std::string name);
    virtual ~Item();
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    Project& project() const { return *project_; }
    ItemId id() const { return id_; }
    ItemType type() const { return type_; }
    bool is_alive() const { return alive_; }
    const std::string& name() const { return name_; }
    // Undoable. Rewrites expressions that name the composition, or layers that display this name.
    void set_name(std::string name);

    Item* parent_folder() const { return folder_; }  // null for the root folder
    std::vector<Item*> folder_contents() const;      // folders only, in order of creation; linear

    int width() const { return width_; }
    int height() const { return height_; }
    void load_size(int width, int height) { width_ = width, height_ = height; }
    PixelAspect pixel_aspect() const { return aspect_; }
    void set_pixel_aspect(PixelAspect aspect);  // undoable

    const FootageFacts& footage() const { return footage_; }
    void load_footage(const FootageFacts& facts) { footage_ = facts; }

    // Layers, in all compositions, whose source this is. Order unspecified.
    const std::vector<Layer*>& users() const { return users_; }

    Comp* comp();  // null for anything but a composition

    const std::shared_ptr<const FormatData>& format_data() const { return format_data_; }
    void set_format_data(std::shared_ptr<const FormatData> data) { format_data_ = std::move(data); }

  private:
    friend class Project;
    friend class Layer;
    friend class Comp;

    void require_alive() const;
    void change_name(std::string name);

    Project* project_;
    ItemId id_;
    ItemType type_;
    std::string name_;
    bool alive_ = false;
    Item* folder_ = nullptr;
    std::map<ItemId, Item*> contents_;  // ids ascend in order of creation
    int width_ = 0;
    int height_ = 0;
    PixelAspect aspect_;
    FootageFacts footage_;
    std::vector<Layer*> users_;
    Sequence<Item>::Node* walk_node_ = nullptr;
    std::shared_ptr<const FormatData> format_data_;
};

}  // namespace host::model
