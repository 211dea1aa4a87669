// Suites of the fake host: layers.
#include <algorithm>
#include <cstring>

#include "fake_host.h"

namespace fake {

namespace {

using Arguments = std::vector<std::string>;

const char* mode_text(AEGP_LTimeMode mode) {
    return mode == AEGP_LTimeMode_LayerTime ? "layer" : "comp";
}

template <int V>
A_Err get_comp_num_layers(AEGP_CompH comp, A_long* count) {
    return host().call(function_of("Layer", V, "GetCompNumLayers"), {text_of(comp)},
                       [&] { *count = static_cast<A_long>(object<Comp>(comp)->layers.size()); });
}

template <int V>
A_Err get_comp_layer_by_index(AEGP_CompH comp, A_long index, AEGP_LayerH* layer) {
    return host().call(function_of("Layer", V, "GetCompLayerByIndex"), {text_of(comp), number(index)}, [&] {
        const std::vector<Layer*>& layers = object<Comp>(comp)->layers;
        if (index < 0 || static_cast<std::size_t>(index) >= layers.size()) return A_Err_PARAMETER;
        *layer = handle(layers[static_cast<std::size_t>(index)]);
        return A_Err_NONE;
    });
}

template <int V>
A_Err get_layer_index(AEGP_LayerH layer, A_long* index) {
    return host().call(function_of("Layer", V, "GetLayerIndex"), {text_of(layer)}, [&] {
        const std::vector<Layer*>& layers = object<Layer>(layer)->comp->layers;
        *index = static_cast<A_long>(std::find(layers.begin(), layers.end(), object<Layer>(layer)) - layers.begin());
    });
}

template <int V>
A_Err get_layer_source_item(AEGP_LayerH layer, AEGP_ItemH* item) {
    return host().call(function_of("Layer", V, "GetLayerSourceItem"), {text_of(layer)},
                       [&] { *item = handle(object<Layer>(layer)->source); });
}

A_Err get_layer_parent_comp(AEGP_LayerH layer, AEGP_CompH* comp) {
    return host().call("Layer5.GetLayerParentComp", {text_of(layer)},
                       [&] { *comp = handle(object<Layer>(layer)->comp); });
}

void write_name(const std::string& name, A_char* buffer) {
    if (buffer == nullptr) return;
    std::strncpy(buffer, name.c_str(), AEGP_MAX_LAYER_NAME_SIZE - 1);
    buffer[AEGP_MAX_LAYER_NAME_SIZE - 1] = '\0';
}

A_Err get_layer_name(AEGP_LayerH layer, A_char* layer_name, A_char* source_name) {
    const Arguments arguments = {text_of(layer), layer_name == nullptr ? "null" : "own",
                                 source_name == nullptr ? "null" : "source"};
    const A_Err err = host().call("Layer5.GetLayerName", arguments, [&] {
        write_name(object<Layer>(layer)->own_name, layer_name);
        write_name(object<Layer>(layer)->source_name, source_name);
    });
    if (err != A_Err_NONE) write_name(host().half_read_name, layer_name != nullptr ? layer_name : source_name);
    return err;
}

std::string utf8(const std::u16string& text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        if (code >= 0xD800 && code < 0xDC00 && i + 1 < text.size()) {
            code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00u);
        }
        const auto add = [&bytes](char32_t byte) { bytes += static_cast<char>(byte); };
        const auto add_tail = [&](int shift) { add(0x80 | ((code >> shift) & 0x3F)); };
        if (code < 0x80) {
            add(code);
        } else if (code < 0x800) {
            add(0xC0 | (code >> 6));
            add_tail(0);
        } else if (code < 0x10000) {
            add(0xE0 | (code >> 12));
            add_tail(6);
            add_tail(0);
        } else {
            add(0xF0 | (code >> 18));
            add_tail(12);
            add_tail(6);
            add_tail(0);
        }
    }
    return bytes;
}

A_Err set_layer_name(AEGP_LayerH layer, const A_UTF16Char* name) {
    return host().call("Layer6.SetLayerName", {text_of(layer), narrow(name)}, [&] {
        Layer* renamed = object<Layer>(layer);
        renamed->written_name.clear();
        for (; *name != 0; ++name) renamed->written_name += static_cast<char16_t>(*name);
        renamed->own_name = utf8(renamed->written_name);
    });
}

template <int V>
A_Err set_layer_flag(AEGP_LayerH layer, AEGP_LayerFlags flag, A_Boolean value) {
    const Arguments arguments = {text_of(layer), number(flag), value ? "true" : "false"};
    return host().call(function_of("Layer", V, "SetLayerFlag"), arguments, [&] {
        if (flag == AEGP_LayerFlag_LAYER_IS_3D) object<Layer>(layer)->is_3d = value != 0;
    });
}

template <int V>
A_Err get_layer_in_point(AEGP_LayerH layer, AEGP_LTimeMode mode, A_Time* time) {
    return host().call(function_of("Layer", V, "GetLayerInPoint"), {text_of(layer), mode_text(mode)}, [&] {
        const Layer* asked = object<Layer>(layer);
        *time = mode == AEGP_LTimeMode_LayerTime ? asked->in_layer : asked->in_comp;
    });
}

A_Err get_layer_duration(AEGP_LayerH layer, AEGP_LTimeMode mode, A_Time* time) {
    return host().call("Layer5.GetLayerDuration", {text_of(layer), mode_text(mode)}, [&] {
        const Layer* asked = object<Layer>(layer);
        *time = mode == AEGP_LTimeMode_LayerTime ? asked->duration_layer : asked->duration_comp;
    });
}

A_Err set_layer_in_point_and_duration(AEGP_LayerH layer, AEGP_LTimeMode mode, const A_Time* in_point,
                                      const A_Time* duration) {
    const Arguments arguments = {text_of(layer), mode_text(mode), text_of(*in_point), text_of(*duration)};
    return host().call("Layer5.SetLayerInPointAndDuration", arguments, [&] {
        Layer* trimmed = object<Layer>(layer);
        (mode == AEGP_LTimeMode_LayerTime ? trimmed->in_layer : trimmed->in_comp) = *in_point;
        trimmed->duration_layer = *duration;
        trimmed->duration_comp = *duration;
    });
}

A_Err get_layer_offset(AEGP_LayerH layer, A_Time* offset) {
    return host().call("Layer5.GetLayerOffset", {text_of(layer)}, [&] { *offset = object<Layer>(layer)->offset; });
}

A_Err set_layer_offset(AEGP_LayerH layer, const A_Time* offset) {
    return host().call("Layer5.SetLayerOffset", {text_of(layer), text_of(*offset)}, [&] {
        Layer* moved = object<Layer>(layer);
        const auto shift = static_cast<A_u_long>(offset->value) - static_cast<A_u_long>(moved->offset.value);
        moved->offset = *offset;
        moved->in_comp.value = static_cast<A_long>(static_cast<A_u_long>(moved->in_comp.value) + shift);
    });
}

A_Err add_layer(AEGP_ItemH item, AEGP_CompH comp, AEGP_LayerH* layer) {
    return host().call("Layer5.AddLayer", {text_of(item), text_of(comp)}, [&] {
        *layer = handle(host().add_layer_on_top(object<Comp>(comp), "added", object<Item>(item)));
    });
}

template <int V>
A_Err reorder_layer(AEGP_LayerH layer, A_long index) {
    return host().call(function_of("Layer", V, "ReorderLayer"), {text_of(layer), number(index)}, [&] {
        std::vector<Layer*>& layers = object<Layer>(layer)->comp->layers;
        std::erase(layers, object<Layer>(layer));
        layers.insert(layers.begin() + std::min<std::ptrdiff_t>(index, std::ssize(layers)), object<Layer>(layer));
    });
}

A_Err get_layer_object_type(AEGP_LayerH layer, AEGP_ObjectType* type) {
    return host().call("Layer5.GetLayerObjectType", {text_of(layer)},
                       [&] { *type = object<Layer>(layer)->object_type; });
}

A_Err is_layer_3d(AEGP_LayerH layer, A_Boolean* is_3d) {
    return host().call("Layer5.IsLayer3D", {text_of(layer)}, [&] { *is_3d = object<Layer>(layer)->is_3d; });
}

A_Err get_layer_parent(AEGP_LayerH layer, AEGP_LayerH* parent) {
    return host().call("Layer5.GetLayerParent", {text_of(layer)},
                       [&] { *parent = handle(object<Layer>(layer)->parent); });
}

A_Err set_layer_parent(AEGP_LayerH layer, AEGP_LayerH parent) {
    return host().call("Layer5.SetLayerParent", {text_of(layer), text_of(parent)},
                       [&] { object<Layer>(layer)->parent = object<Layer>(parent); });
}

A_Err delete_layer(AEGP_LayerH layer) {
    return host().call("Layer4.DeleteLayer", {text_of(layer)},
                       [&] { std::erase(object<Layer>(layer)->comp->layers, object<Layer>(layer)); });
}

}  // namespace

void add_layer_suites(SuiteTables& tables) {
    auto& layer4 = tables.add<AEGP_LayerSuite4>("AEGP Layer Suite 10");
    layer4.AEGP_GetLayerSourceItem = get_layer_source_item<4>;
    layer4.AEGP_SetLayerFlag = set_layer_flag<4>;
    layer4.AEGP_GetLayerInPoint = get_layer_in_point<4>;
    layer4.AEGP_DeleteLayer = delete_layer;

    auto& layer5 = tables.add<AEGP_LayerSuite5>("AEGP Layer Suite 11");
    layer5.AEGP_GetCompNumLayers = get_comp_num_layers<5>;
    layer5.AEGP_GetCompLayerByIndex = get_comp_layer_by_index<5>;
    layer5.AEGP_GetLayerIndex = get_layer_index<5>;
    layer5.AEGP_GetLayerSourceItem = get_layer_source_item<5>;
    layer5.AEGP_GetLayerParentComp = get_layer_parent_comp;
    layer5.AEGP_GetLayerName = get_layer_name;
    layer5.AEGP_SetLayerFlag = set_layer_flag<5>;
    layer5.AEGP_GetLayerInPoint = get_layer_in_point<5>;
    layer5.AEGP_GetLayerDuration = get_layer_duration;
    layer5.AEGP_SetLayerInPointAndDuration = set_layer_in_point_and_duration;
    layer5.AEGP_GetLayerOffset = get_layer_offset;
    layer5.AEGP_SetLayerOffset = set_layer_offset;
    layer5.AEGP_AddLayer = add_layer;
    layer5.AEGP_ReorderLayer = reorder_layer<5>;
    layer5.AEGP_GetLayerObjectType = get_layer_object_type;
    layer5.AEGP_IsLayer3D = is_layer_3d;
    layer5.AEGP_GetLayerParent = get_layer_parent;
    layer5.AEGP_SetLayerParent = set_layer_parent;

    auto& layer6 = tables.add<AEGP_LayerSuite6>("AEGP Layer Suite 12");
    layer6.AEGP_GetLayerIndex = get_layer_index<6>;
    layer6.AEGP_ReorderLayer = reorder_layer<6>;
    layer6.AEGP_SetLayerName = set_layer_name;

    auto& layer7 = tables.add<AEGP_LayerSuite7>("AEGP Layer Suite 13");
    layer7.AEGP_GetCompNumLayers = get_comp_num_layers<7>;
    layer7.AEGP_GetCompLayerByIndex = get_comp_layer_by_index<7>;
    layer7.AEGP_GetLayerSourceItem = get_layer_source_item<7>;
}

}  // namespace fake
