// Layer suites 4 to 7: identity, names, switches, parents, stack. Timing is in layer_timing.h.
#include <bit>
#include <cstring>
#include <tuple>

#include "calls/slot.h"
#include "model/item.h"
#include "refusals.h"
#include "tables/layer_timing.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

using model::Comp;
using model::Item;
using model::Layer;

int layer_count(Comp& comp) {
    return comp.layer_count();
}
Layer* layer_at(Comp& comp, int index) {
    return &comp.layer_at(index);
}
int index_of(Layer& layer) {
    return layer.index();
}
Item* source_of(Layer& layer) {
    return layer.source();
}
Comp* comp_of(Layer& layer) {
    return &layer.comp();
}
int id_of(Layer& layer) {
    return layer.id();
}

Layer* layer_with_id(HostState& host, Comp& comp, int id) {
    Layer* layer = host.project.layer_by_id(id);
    if (!layer || &layer->comp() != &comp)
        refuse_argument("The composition has no layer of id " + std::to_string(id) + ".");
    return layer;
}

void copy_name(const HostState& host, std::string_view name, A_char* buffer) {
    if (!buffer) return;
    const std::string_view text = cut(name, AEGP_MAX_LAYER_NAME_SIZE - 1, host.project.rules().cut_names_at_character);
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
}

void narrow_names(HostState& host, Layer& layer, A_char* own_name, A_char* source_name) {
    copy_name(host, layer.own_name(), own_name);
    copy_name(host, layer.source_name(), source_name);
}

std::tuple<OrNull<WideText>, OrNull<WideText>> wide_names(Caller, Layer& layer) {
    return {{{"layer name", layer.own_name()}}, {{"source name", layer.source_name()}}};
}

// An empty name removes the layer's own name.
void rename(Layer& layer, std::string name) {
    layer.rename(std::move(name));
}

int flags_of(Layer& layer) {
    return static_cast<int>(layer.flags());
}

void set_flag(Layer& layer, AEGP_LayerFlags flag, bool on) {
    const auto bits = static_cast<std::uint32_t>(flag);
    if (!std::has_single_bit(bits) || bits > AEGP_LayerFlag_ENVIRONMENT_LAYER)
        refuse_argument(std::to_string(flag) + " is not one layer flag.");
    layer.set_flag(static_cast<model::LayerFlag>(bits), on);
}

int object_type(Layer& layer) {
    return static_cast<int>(layer.kind());
}
bool is_3d(Layer& layer) {
    return layer.is_3d();
}
bool is_2d(Layer& layer) {
    return !layer.is_3d();
}

Layer* parent_of(Layer& layer) {
    return layer.parent();
}

void set_parent(HostState& host, Layer& layer, Layer* parent) {
    layer.set_parent(parent, host.project.rules().suite_parenting_compensates ? model::Parenting::keep_place
                                                                              : model::Parenting::keep_local_values);
}

OrNull<Layer*> add_layer(Item& source, Comp& comp) {
    return {&comp.add_layer(source)};
}

void delete_layer(Layer& layer) {
    layer.remove();
}

void reorder(HostState& host, Layer& layer, int index) {
    if (index < AEGP_REORDER_LAYER_TO_END) refuse_argument("There is no place " + std::to_string(index) + ".");
    const bool before = host.project.rules().reorder_meaning == model::ReorderMeaning::insert_before;
    // Removing the layer moves those below it up by one.
    const bool comes_from_above = layer.index() < index;
    layer.move_to(before && comes_from_above ? index - 1 : index);
}

template <class Suite>
constexpr bool kWideNames = std::is_same_v<Suite, AEGP_LayerSuite6> || std::is_same_v<Suite, AEGP_LayerSuite7>;

template <class Suite>
Suite layer_suite() {
    Suite s = trapped_suite<Suite>();
    s.AEGP_GetCompNumLayers = slot<&Suite::AEGP_GetCompNumLayers, layer_count>;
    s.AEGP_GetCompLayerByIndex = slot<&Suite::AEGP_GetCompLayerByIndex, layer_at>;
    s.AEGP_GetLayerIndex = slot<&Suite::AEGP_GetLayerIndex, index_of>;
    s.AEGP_GetLayerSourceItem = slot<&Suite::AEGP_GetLayerSourceItem, source_of>;
    s.AEGP_GetLayerParentComp = slot<&Suite::AEGP_GetLayerParentComp, comp_of>;
    s.AEGP_GetLayerID = slot<&Suite::AEGP_GetLayerID, id_of>;
    if constexpr (requires { &Suite::AEGP_GetLayerFromLayerID; })
        s.AEGP_GetLayerFromLayerID = slot<&Suite::AEGP_GetLayerFromLayerID, layer_with_id>;
    if constexpr (kWideNames<Suite>)
        s.AEGP_GetLayerName = slot<&Suite::AEGP_GetLayerName, wide_names>;
    else
        s.AEGP_GetLayerName = slot<&Suite::AEGP_GetLayerName, narrow_names>;
    s.AEGP_SetLayerName = slot<&Suite::AEGP_SetLayerName, rename>;
    s.AEGP_GetLayerFlags = slot<&Suite::AEGP_GetLayerFlags, flags_of>;
    s.AEGP_SetLayerFlag = slot<&Suite::AEGP_SetLayerFlag, set_flag>;
    s.AEGP_GetLayerObjectType = slot<&Suite::AEGP_GetLayerObjectType, object_type>;
    s.AEGP_IsLayer3D = slot<&Suite::AEGP_IsLayer3D, is_3d>;
    s.AEGP_IsLayer2D = slot<&Suite::AEGP_IsLayer2D, is_2d>;
    s.AEGP_GetLayerParent = slot<&Suite::AEGP_GetLayerParent, parent_of>;
    s.AEGP_SetLayerParent = slot<&Suite::AEGP_SetLayerParent, set_parent>;
    s.AEGP_AddLayer = slot<&Suite::AEGP_AddLayer, add_layer>;
    s.AEGP_DeleteLayer = slot<&Suite::AEGP_DeleteLayer, delete_layer>;
    s.AEGP_ReorderLayer = slot<&Suite::AEGP_ReorderLayer, reorder>;
    s.AEGP_GetLayerInPoint = slot<&Suite::AEGP_GetLayerInPoint, in_point>;
    s.AEGP_GetLayerDuration = slot<&Suite::AEGP_GetLayerDuration, duration>;
    s.AEGP_SetLayerInPointAndDuration = slot<&Suite::AEGP_SetLayerInPointAndDuration, set_in_point_and_duration>;
    s.AEGP_GetLayerOffset = slot<&Suite::AEGP_GetLayerOffset, offset>;
    s.AEGP_SetLayerOffset = slot<&Suite::AEGP_SetLayerOffset, set_offset>;
    return s;
}

}  // namespace

template <>
AEGP_LayerSuite4 make_suite() {
    return layer_suite<AEGP_LayerSuite4>();
}
template <>
AEGP_LayerSuite5 make_suite() {
    return layer_suite<AEGP_LayerSuite5>();
}
template <>
AEGP_LayerSuite6 make_suite() {
    return layer_suite<AEGP_LayerSuite6>();
}
template <>
AEGP_LayerSuite7 make_suite() {
    return layer_suite<AEGP_LayerSuite7>();
}

}  // namespace host::suites
