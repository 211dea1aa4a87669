// Item suites 1, 5, 6 and 8, project suites 5 and 6.
#include <cstring>
#include <tuple>

#include "calls/slot.h"
#include "model/item.h"
#include "refusals.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

using model::Item;
using model::Project;

int project_count() {
    return 1;
}

Project* project_at(HostState& host, int index) {
    if (index != 0) refuse_argument("There is no project " + std::to_string(index) + ".");
    return &host.project;
}

Item* root_of(Project& project) {
    return &project.root_folder();
}

// The walk starts with the root folder and ends with null.
Item* next_item(HostState& host, Item& item) {
    return host.project.next_item(item);
}
Item* next_item_of(Project& project, Item& item) {
    return project.next_item(item);
}

Item* active_item(HostState& host) {
    return host.project.active_item();
}
bool is_selected(HostState& host, Item& item) {
    return host.project.is_item_selected(item);
}
int type_of(Item& item) {
    return static_cast<int>(item.type());
}
int id_of(Item& item) {
    return item.id();
}
Item* folder_of(Item& item) {
    return item.parent_folder();
}
std::tuple<int, int> dimensions_of(Item& item) {
    return {item.width(), item.height()};
}

A_Ratio pixel_aspect_of(Item& item) {
    const model::PixelAspect aspect = item.pixel_aspect();
    return {aspect.num, aspect.den};
}

void narrow_name(HostState& host, Item& item, A_char* buffer) {
    if (!buffer) refuse_null("name buffer");
    const std::string_view text =
        cut(item.name(), AEGP_MAX_ITEM_NAME_SIZE - 1, host.project.rules().cut_names_at_character);
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
}

WideText wide_name(Caller, Item& item) {
    return {"item name", item.name()};
}

void delete_item(HostState& host, Item& item) {
    host.project.delete_item(item);
}

template <class Suite>
Suite item_suite() {
    Suite s = trapped_suite<Suite>();
    if constexpr (requires { &Suite::AEGP_GetFirstProjItem; }) {
        s.AEGP_GetFirstProjItem = slot<&Suite::AEGP_GetFirstProjItem, root_of>;
        s.AEGP_GetNextProjItem = slot<&Suite::AEGP_GetNextProjItem, next_item_of>;
    } else {
        s.AEGP_GetNextItem = slot<&Suite::AEGP_GetNextItem, next_item>;
    }
    s.AEGP_GetActiveItem = slot<&Suite::AEGP_GetActiveItem, active_item>;
    s.AEGP_IsItemSelected = slot<&Suite::AEGP_IsItemSelected, is_selected>;
    s.AEGP_GetItemType = slot<&Suite::AEGP_GetItemType, type_of>;
    if constexpr (std::is_same_v<Suite, AEGP_ItemSuite8>)
        s.AEGP_GetItemName = slot<&Suite::AEGP_GetItemName, wide_name>;
    else
        s.AEGP_GetItemName = slot<&Suite::AEGP_GetItemName, narrow_name>;
    s.AEGP_GetItemID = slot<&Suite::AEGP_GetItemID, id_of>;
    s.AEGP_GetItemParentFolder = slot<&Suite::AEGP_GetItemParentFolder, folder_of>;
    s.AEGP_GetItemDimensions = slot<&Suite::AEGP_GetItemDimensions, dimensions_of>;
    s.AEGP_GetItemPixelAspectRatio = slot<&Suite::AEGP_GetItemPixelAspectRatio, pixel_aspect_of>;
    s.AEGP_DeleteItem = slot<&Suite::AEGP_DeleteItem, delete_item>;
    return s;
}

template <class Suite>
Suite project_suite() {
    Suite s = trapped_suite<Suite>();
    s.AEGP_GetNumProjects = slot<&Suite::AEGP_GetNumProjects, project_count>;
    s.AEGP_GetProjectByIndex = slot<&Suite::AEGP_GetProjectByIndex, project_at>;
    s.AEGP_GetProjectRootFolder = slot<&Suite::AEGP_GetProjectRootFolder, root_of>;
    return s;
}

}  // namespace

template <>
AEGP_ItemSuite1 make_suite() {
    return item_suite<AEGP_ItemSuite1>();
}
template <>
AEGP_ItemSuite5 make_suite() {
    return item_suite<AEGP_ItemSuite5>();
}
template <>
AEGP_ItemSuite6 make_suite() {
    return item_suite<AEGP_ItemSuite6>();
}
template <>
AEGP_ItemSuite8 make_suite() {
    return item_suite<AEGP_ItemSuite8>();
}
template <>
AEGP_ProjSuite5 make_suite() {
    return project_suite<AEGP_ProjSuite5>();
}
template <>
AEGP_ProjSuite6 make_suite() {
    return project_suite<AEGP_ProjSuite6>();
}

}  // namespace host::suites
