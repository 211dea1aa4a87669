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
    return host().call(function_of("Layer", V, "GetCompNumLayers"), {text_of(comp)}, [&] {
        *count = static_cast<A_long>(object<Comp>(comp)->layers.size());
        return A_Err_NONE;
    });
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
        return A_Err_NONE;
    });
}

template <int V>
A_Err get_layer_source_item(AEGP_LayerH layer, AEGP_ItemH* item) {
    return host().call(function_of("Layer", V, "GetLayerSourceItem"), {text_of(layer)}, [&] {
        *item = handle(object<Layer>(layer)->source);
        return A_Err_NONE;
    });
}

A_Err get_layer_parent_comp(AEGP_LayerH layer, AEGP_CompH* comp) {
    return host().call("Layer5.GetLayerParentComp", {text_of(layer)}, [&] {
        *comp = handle(object<Layer>(layer)->comp);
        return A_Err_NONE;
    });
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
        return A_Err_NONE;
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
        return A_Err_NONE;
    });
}

template <int V>
A_Err set_layer_flag(AEGP_LayerH layer, AEGP_LayerFlags flag, A_Boolean value) {
    const Arguments arguments = {text_of(layer), number(flag), value ? "true" : "false"};
    return host().call(function_of("Layer", V, "SetLayerFlag"), arguments, [&] {
        if (flag == AEGP_LayerFlag_LAYER_IS_3D) object<Layer>(layer)->is_3d = value != 0;
        return A_Err_NONE;
    });
}

template <int V>
A_Err get_layer_in_point(AEGP_LayerH layer, AEGP_LTimeMode mode, A_Time* time) {
    return host().call(function_of("Layer", V, "GetLayerInPoint"), {text_of(layer), mode_text(mode)}, [&] {
        const Layer* asked = object<Layer>(layer);
        *time = mode == AEGP_LTimeMode_LayerTime ? asked->in_layer : asked->in_comp;
        return A_Err_NONE;
    });
}

A_Err get_layer_duration(AEGP_LayerH layer, AEGP_LTimeMode mode, A_Time* time) {
    return host().call("Layer5.GetLayerDuration", {text_of(layer), mode_text(mode)}, [&] {
        const Layer* asked = object<Layer>(layer);
        *time = mode == AEGP_LTimeMode_LayerTime ? asked->duration_layer : asked->duration_comp;
        return A_Err_NONE;
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
        return A_Err_NONE;
    });
}

A_Err get_layer_offset(AEGP_LayerH layer, A_Time* offset) {
    return host().call("Layer5.GetLayerOffset", {text_of(layer)}, [&] {
        *offset = object<Layer>(layer)->offset;
        return A_Err_NONE;
    });
}

A_Err set_layer_offset(AEGP_LayerH layer, const A_Time* offset) {
    return host().call("Layer5.SetLayerOffset", {text_of(layer), text_of(*offset)}, [&] {
        Layer* moved = object<Layer>(layer);
        const auto shift = static_cast<A_u_long>(offset->value) - static_cast<A_u_long>(moved->offset.value);
        moved->offset = *offset;
        moved->in_comp.value = static_cast<A_long>(static_cast<A_u_long>(moved->in_comp.value) + shift);
        return A_Err_NONE;
    });
}

A_Err add_layer(AEGP_ItemH item, AEGP_CompH comp, AEGP_LayerH* layer) {
    return host().call("Layer5.AddLayer", {text_of(item), text_of(comp)}, [&] {
        *layer = handle(host().add_layer_on_top(object<Comp>(comp), "added", object<Item>(item)));
        return A_Err_NONE;
    });
}

template <int V>
A_Err reorder_layer(AEGP_LayerH layer, A_long index) {
    return host().call(function_of("Layer", V, "ReorderLayer"), {text_of(layer), number(index)}, [&] {
        std::vector<Layer*>& layers = object<Layer>(layer)->comp->layers;
        std::erase(layers, object<Layer>(layer));
        layers.insert(layers.begin() + std::min<std::ptrdiff_t>(index, std::ssize(layers)), object<Layer>(layer));
        return A_Err_NONE;
    });
}

A_Err get_layer_object_type(AEGP_LayerH layer, AEGP_ObjectType* type) {
    return host().call("Layer5.GetLayerObjectType", {text_of(layer)}, [&] {
        *type = object<Layer>(layer)->object_type;
        return A_Err_NONE;
    });
}

A_Err is_layer_3d(AEGP_LayerH layer, A_Boolean* is_3d) {
    return host().call("Layer5.IsLayer3D", {text_of(layer)}, [&] {
        *is_3d = object<Layer>(layer)->is_3d;
        return A_Err_NONE;
    });
}

A_Err get_layer_parent(AEGP_LayerH layer, AEGP_LayerH* parent) {
    return host().call("Layer5.GetLayerParent", {text_of(layer)}, [&] {
        *parent = handle(object<Layer>(layer)->parent);
        return A_Err_NONE;
    });
}

A_Err set_layer_parent(AEGP_LayerH layer, AEGP_LayerH parent) {
    return host().call("Layer5.SetLayerParent", {text_of(layer), text_of(parent)}, [&] {
        object<Layer>(layer)->parent = object<Layer>(parent);
        return A_Err_NONE;
    });
}

A_Err delete_layer(AEGP_LayerH layer) {
    return host().call("Layer4.DeleteLayer", {text_of(layer)}, [&] {
        std::erase(object<Layer>(layer)->comp->layers, object<Layer>(layer));
        return A_Err_NONE;
    });
}

}  // namespace

const void* layer_suite(const std::string& key) {
    static const AEGP_LayerSuite4 layer4 = [] {
        AEGP_LayerSuite4 suite = {};
        suite.AEGP_GetLayerSourceItem = get_layer_source_item<4>;
        suite.AEGP_SetLayerFlag = set_layer_flag<4>;
        suite.AEGP_GetLayerInPoint = get_layer_in_point<4>;
        suite.AEGP_DeleteLayer = delete_layer;
        return suite;
    }();
    static const AEGP_LayerSuite5 layer5 = [] {
        AEGP_LayerSuite5 suite = {};
        suite.AEGP_GetCompNumLayers = get_comp_num_layers<5>;
        suite.AEGP_GetCompLayerByIndex = get_comp_layer_by_index<5>;
        suite.AEGP_GetLayerIndex = get_layer_index<5>;
        suite.AEGP_GetLayerSourceItem = get_layer_source_item<5>;
        suite.AEGP_GetLayerParentComp = get_layer_parent_comp;
        suite.AEGP_GetLayerName = get_layer_name;
        suite.AEGP_SetLayerFlag = set_layer_flag<5>;
        suite.AEGP_GetLayerInPoint = get_layer_in_point<5>;
        suite.AEGP_GetLayerDuration = get_layer_duration;
        suite.AEGP_SetLayerInPointAndDuration = set_layer_in_point_and_duration;
        suite.AEGP_GetLayerOffset = get_layer_offset;
        suite.AEGP_SetLayerOffset = set_layer_offset;
        suite.AEGP_AddLayer = add_layer;
        suite.AEGP_ReorderLayer = reorder_layer<5>;
        suite.AEGP_GetLayerObjectType = get_layer_object_type;
        suite.AEGP_IsLayer3D = is_layer_3d;
        suite.AEGP_GetLayerParent = get_layer_parent;
        suite.AEGP_SetLayerParent = set_layer_parent;
        return suite;
    }();
    static const AEGP_LayerSuite6 layer6 = [] {
        AEGP_LayerSuite6 suite = {};
        suite.AEGP_GetLayerIndex = get_layer_index<6>;
        suite.AEGP_ReorderLayer = reorder_layer<6>;
        suite.AEGP_SetLayerName = set_layer_name;
        return suite;
    }();
    static const AEGP_LayerSuite7 layer7 = [] {
        AEGP_LayerSuite7 suite = {};
        suite.AEGP_GetCompNumLayers = get_comp_num_layers<7>;
        suite.AEGP_GetCompLayerByIndex = get_comp_layer_by_index<7>;
        suite.AEGP_GetLayerSourceItem = get_layer_source_item<7>;
        return suite;
    }();
    static const std::map<std::string, const void*> suites = {
        {"AEGP Layer Suite 10", &layer4},
        {"AEGP Layer Suite 11", &layer5},
        {"AEGP Layer Suite 12", &layer6},
        {"AEGP Layer Suite 13", &layer7},
    };
    const auto found = suites.find(key);
    return found == suites.end() ? nullptr : found->second;
}

}  // namespace fake
