// Composition suites 4, 6, 7 and 11: items, nulls, selections.
#include <vector>

#include "calls/slot.h"
#include "model/item.h"
#include "refusals.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

using model::Comp;
using model::Item;
using model::Layer;

Comp* comp_of(Item& item) {
    return item.comp();
}
Item* item_of(Comp& comp) {
    return &comp;
}

// A null without a valid duration lasts as long as the composition.
Layer* create_null(std::string name, Comp& comp, const A_Time* duration) {
    const bool whole = !duration || duration->scale == 0 || duration->value <= 0;
    return &comp.create_null(name, whole ? model::Time{} : from_plugin(*duration));
}

Collection selection_of(HostState& host, Caller, Comp& comp) {
    const std::vector<Layer*> selected = comp.selected_layers();
    Collection collection;
    collection.items.reserve(selected.size());
    for (const Layer* layer : selected) {
        AEGP_CollectionItemV2 item{};
        item.type = AEGP_CollectionItemType_LAYER;
        item.u.layer.layerH = handle_of(host, *layer);
        collection.items.push_back(item);
    }
    return collection;
}

// Only layers can be selected.
void set_selection(HostState& host, Comp& comp, Collection& collection) {
    std::vector<Layer*> layers;
    layers.reserve(collection.items.size());
    for (const AEGP_CollectionItemV2& item : collection.items) {
        if (item.type != AEGP_CollectionItemType_LAYER)
            refuse_as_unsupported("The host selects layers only, no members of type " + std::to_string(item.type) +
                                  ".");
        layers.push_back(&living_layer(host, item.u.layer.layerH));
    }
    comp.select(layers);
}

template <class Suite>
Suite comp_suite() {
    Suite s = trapped_suite<Suite>();
    s.AEGP_GetCompFromItem = slot<&Suite::AEGP_GetCompFromItem, comp_of>;
    s.AEGP_GetItemFromComp = slot<&Suite::AEGP_GetItemFromComp, item_of>;
    s.AEGP_CreateNullInComp = slot<&Suite::AEGP_CreateNullInComp, create_null>;
    s.AEGP_GetNewCollectionFromCompSelection = slot<&Suite::AEGP_GetNewCollectionFromCompSelection, selection_of>;
    s.AEGP_SetSelection = slot<&Suite::AEGP_SetSelection, set_selection>;
    return s;
}

}  // namespace

template <>
AEGP_CompSuite4 make_suite() {
    return comp_suite<AEGP_CompSuite4>();
}
template <>
AEGP_CompSuite6 make_suite() {
    return comp_suite<AEGP_CompSuite6>();
}
template <>
AEGP_CompSuite7 make_suite() {
    return comp_suite<AEGP_CompSuite7>();
}
template <>
AEGP_CompSuite11 make_suite() {
    return comp_suite<AEGP_CompSuite11>();
}

}  // namespace host::suites
