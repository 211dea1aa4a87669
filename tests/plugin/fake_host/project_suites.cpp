// Suites of the fake host: the project, its items, compositions, footage.
#include <cstring>

#include "fake_host.h"

namespace fake {

namespace {

using Arguments = std::vector<std::string>;

A_Err get_active_item(AEGP_ItemH* item) {
    return host().call("Item1.GetActiveItem", {}, [&] { *item = handle(host().active_item); });
}

A_Err is_item_selected(AEGP_ItemH item, A_Boolean* selected) {
    return host().call("Item1.IsItemSelected", {text_of(item)}, [&] { *selected = object<Item>(item)->selected; });
}

template <int V>
A_Err get_item_type(AEGP_ItemH item, AEGP_ItemType* type) {
    return host().call(function_of("Item", V, "GetItemType"), {text_of(item)}, [&] {
        if (item == nullptr) return A_Err_PARAMETER;
        *type = object<Item>(item)->type;
        return A_Err_NONE;
    });
}

template <int V>
A_Err get_item_id(AEGP_ItemH item, A_long* id) {
    return host().call(function_of("Item", V, "GetItemID"), {text_of(item)}, [&] {
        if (item == nullptr) return A_Err_PARAMETER;
        *id = object<Item>(item)->id;
        return A_Err_NONE;
    });
}

template <int V>
A_Err delete_item(AEGP_ItemH item) {
    return host().call(function_of("Item", V, "DeleteItem"), {text_of(item)}, [&] {
        Item* deleted = object<Item>(item);
        deleted->deleted = true;
        std::erase(host().items, deleted);
    });
}

A_Err get_item_parent_folder(AEGP_ItemH item, AEGP_ItemH* folder) {
    return host().call("Item5.GetItemParentFolder", {text_of(item)},
                       [&] { *folder = handle(object<Item>(item)->folder); });
}

A_Err get_item_dimensions(AEGP_ItemH item, A_long* width, A_long* height) {
    return host().call("Item5.GetItemDimensions", {text_of(item)}, [&] {
        *width = object<Item>(item)->width;
        *height = object<Item>(item)->height;
    });
}

A_Err get_item_pixel_aspect_ratio(AEGP_ItemH item, A_Ratio* ratio) {
    return host().call("Item5.GetItemPixelAspectRatio", {text_of(item)},
                       [&] { *ratio = object<Item>(item)->pixel_aspect_ratio; });
}

template <int V>
A_Err get_first_proj_item(AEGP_ProjectH project, AEGP_ItemH* item) {
    const Arguments arguments = {project == nullptr ? "null" : "project"};
    return host().call(function_of("Item", V, "GetFirstProjItem"), arguments,
                       [&] { *item = handle(host().items.front()); });
}

template <int V>
A_Err get_next_proj_item(AEGP_ProjectH project, AEGP_ItemH item, AEGP_ItemH* next) {
    const Arguments arguments = {project == nullptr ? "null" : "project", text_of(item)};
    return host().call(function_of("Item", V, "GetNextProjItem"), arguments, [&] {
        const std::vector<Item*>& items = host().items;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (items[i] != object<Item>(item)) continue;
            *next = i + 1 < items.size() ? handle(items[i + 1]) : nullptr;
            return A_Err_NONE;
        }
        return A_Err_PARAMETER;
    });
}

template <int V>
A_Err get_project_by_index(A_long index, AEGP_ProjectH* project) {
    return host().call(function_of("Proj", V, "GetProjectByIndex"), {number(index)},
                       [&] { *project = reinterpret_cast<AEGP_ProjectH>(&host()); });
}

template <int V>
A_Err get_comp_from_item(AEGP_ItemH item, AEGP_CompH* comp) {
    return host().call(function_of("Comp", V, "GetCompFromItem"), {text_of(item)},
                       [&] { *comp = handle(object<Item>(item)->comp); });
}

template <int V>
A_Err get_item_from_comp(AEGP_CompH comp, AEGP_ItemH* item) {
    return host().call(function_of("Comp", V, "GetItemFromComp"), {text_of(comp)},
                       [&] { *item = handle(object<Comp>(comp)->item); });
}

A_Err get_new_collection_from_comp_selection(AEGP_PluginID id, AEGP_CompH comp, AEGP_Collection2H* collection) {
    return host().call("Comp4.GetNewCollectionFromCompSelection", {number(id), text_of(comp)}, [&] {
        const Comp* selected = object<Comp>(comp);
        Collection* made = host().add_collection("", selected->selection);
        made->items.insert(made->items.end(), selected->other_selected.begin(), selected->other_selected.end());
        *collection = handle(made);
        host().opened(text_of(*collection));
    });
}

A_Err set_selection(AEGP_CompH comp, AEGP_Collection2H collection) {
    std::string members;
    if (collection != nullptr) {
        for (const AEGP_CollectionItemV2& item : object<Collection>(collection)->items) {
            if (!members.empty()) members += " ";
            members += text_of(item.u.layer.layerH);
        }
    }
    return host().call("Comp6.SetSelection", {text_of(comp), members});
}

A_Err create_null_in_comp(const A_UTF16Char* name, AEGP_CompH comp, const A_Time* duration, AEGP_LayerH* null_layer) {
    const Arguments arguments = {narrow(name), text_of(comp), duration == nullptr ? "null" : text_of(*duration)};
    return host().call("Comp11.CreateNullInComp", arguments, [&] {
        Item* source = host().add_item("nullItem", AEGP_ItemType_FOOTAGE);
        *null_layer = handle(host().add_layer_on_top(object<Comp>(comp), "null", source));
    });
}

// A record without a member that is zero, so that one which is lost or changed shows.
void write_interpretation(const A_Ratio& ratio, AEGP_FootageInterp* interpretation) {
    std::memset(interpretation, 0x5a, sizeof *interpretation);
    interpretation->pix_aspect_ratio = ratio;
}

A_Err get_footage_interpretation(AEGP_ItemH item, A_Boolean proxy, AEGP_FootageInterp* interpretation) {
    return host().call("Footage5.GetFootageInterpretation", {text_of(item), proxy ? "proxy" : "main"},
                       [&] { write_interpretation(object<Item>(item)->pixel_aspect_ratio, interpretation); });
}

A_Err set_footage_interpretation(AEGP_ItemH item, A_Boolean proxy, const AEGP_FootageInterp* interpretation) {
    const A_Ratio ratio = interpretation->pix_aspect_ratio;
    AEGP_FootageInterp expected;
    write_interpretation(ratio, &expected);
    const bool only_ratio = std::memcmp(&expected, interpretation, sizeof expected) == 0;
    const Arguments arguments = {text_of(item), proxy ? "proxy" : "main", number(ratio.num) + ":" + number(ratio.den),
                                 only_ratio ? "rest as read" : "rest changed"};
    return host().call("Footage5.SetFootageInterpretation", arguments,
                       [&] { object<Item>(item)->pixel_aspect_ratio = ratio; });
}

A_Err new_solid_footage(const A_char* name, A_long width, A_long height, const AEGP_ColorVal* color,
                        AEGP_FootageH* footage) {
    const Arguments arguments = {name,
                                 number(width),
                                 number(height),
                                 number(color->alphaF),
                                 number(color->redF),
                                 number(color->greenF),
                                 number(color->blueF)};
    return host().call("Footage5.NewSolidFootage", arguments,
                       [&] { *footage = reinterpret_cast<AEGP_FootageH>(&host()); });
}

A_Err add_footage_to_project(AEGP_FootageH footage, AEGP_ItemH folder, AEGP_ItemH* item) {
    const Arguments arguments = {footage == nullptr ? "null" : "footage", text_of(folder)};
    return host().call("Footage5.AddFootageToProject", arguments,
                       [&] { *item = handle(host().add_item("solidItem", AEGP_ItemType_FOOTAGE)); });
}

}  // namespace

void add_project_suites(SuiteTables& tables) {
    auto& item1 = tables.add<AEGP_ItemSuite1>("AEGP Item Suite 3");
    item1.AEGP_GetActiveItem = get_active_item;
    item1.AEGP_IsItemSelected = is_item_selected;
    item1.AEGP_GetItemType = get_item_type<1>;
    item1.AEGP_DeleteItem = delete_item<1>;

    auto& item5 = tables.add<AEGP_ItemSuite5>("AEGP Item Suite 7");
    item5.AEGP_GetItemID = get_item_id<5>;
    item5.AEGP_GetItemParentFolder = get_item_parent_folder;
    item5.AEGP_GetItemDimensions = get_item_dimensions;
    item5.AEGP_GetItemPixelAspectRatio = get_item_pixel_aspect_ratio;

    auto& item6 = tables.add<AEGP_ItemSuite6>("AEGP Item Suite 10");
    item6.AEGP_GetItemID = get_item_id<6>;
    item6.AEGP_DeleteItem = delete_item<6>;
    item6.AEGP_GetFirstProjItem = get_first_proj_item<6>;
    item6.AEGP_GetNextProjItem = get_next_proj_item<6>;

    auto& item8 = tables.add<AEGP_ItemSuite8>("AEGP Item Suite 13");
    item8.AEGP_GetItemID = get_item_id<8>;
    item8.AEGP_GetItemType = get_item_type<8>;
    item8.AEGP_GetFirstProjItem = get_first_proj_item<8>;
    item8.AEGP_GetNextProjItem = get_next_proj_item<8>;

    auto& proj5 = tables.add<AEGP_ProjSuite5>("AEGP Proj Suite 8");
    proj5.AEGP_GetProjectByIndex = get_project_by_index<5>;

    auto& proj6 = tables.add<AEGP_ProjSuite6>("AEGP Proj Suite 9");
    proj6.AEGP_GetProjectByIndex = get_project_by_index<6>;

    auto& comp4 = tables.add<AEGP_CompSuite4>("AEGP Comp Suite 9");
    comp4.AEGP_GetCompFromItem = get_comp_from_item<4>;
    comp4.AEGP_GetItemFromComp = get_item_from_comp<4>;
    comp4.AEGP_GetNewCollectionFromCompSelection = get_new_collection_from_comp_selection;

    auto& comp6 = tables.add<AEGP_CompSuite6>("AEGP Comp Suite 14");
    comp6.AEGP_SetSelection = set_selection;

    auto& comp7 = tables.add<AEGP_CompSuite7>("AEGP Comp Suite 15");
    comp7.AEGP_GetCompFromItem = get_comp_from_item<7>;

    auto& comp11 = tables.add<AEGP_CompSuite11>("AEGP Comp Suite 25");
    comp11.AEGP_GetCompFromItem = get_comp_from_item<11>;
    comp11.AEGP_GetItemFromComp = get_item_from_comp<11>;
    comp11.AEGP_CreateNullInComp = create_null_in_comp;

    auto& footage = tables.add<AEGP_FootageSuite5>("AEGP Footage Suite 11");
    footage.AEGP_GetFootageInterpretation = get_footage_interpretation;
    footage.AEGP_SetFootageInterpretation = set_footage_interpretation;
    footage.AEGP_NewSolidFootage = new_solid_footage;
    footage.AEGP_AddFootageToProject = add_footage_to_project;
}

}  // namespace fake
