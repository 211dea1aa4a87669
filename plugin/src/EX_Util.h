// Every operation on layers, a table of contents by subject.
//
// Each takes the run's PluginInfo first and returns the host's error code, 0 for success. Unless said otherwise the
// first failing host call ends the operation, its code is the result, and nothing already done is undone. A suite that
// cannot be acquired gives the code of the suite handler. Handles belong to the host.
#pragma once

#include <string>
#include <vector>

#include "AE_GeneralPlug.h"
#include "AE_Macros.h"
#include "PluginInfo.h"

// ---- Selection (EX_Util_selection.cpp)

// A new collection of the layers selected in the active composition, which the caller disposes. *selection is left
// untouched when no composition is active: set it to null before.
A_Err get_selected_layers(const PluginInfo* info, AEGP_Collection2H* selection);

// Is the item an AV layer whose source is a composition? *is_precomp is written whatever happens: 1 or 0.
A_Err is_layer_precomp(const PluginInfo* info, AEGP_CollectionItemV2* item, unsigned char* is_precomp);

inline bool is_layer_item(const AEGP_CollectionItemV2& item) {
    return item.type == AEGP_CollectionItemType_LAYER;
}

// An item of a collection for the layer, all its other bytes zero.
inline AEGP_CollectionItemV2 layer_item(AEGP_LayerH layer) {
    AEGP_CollectionItemV2 item;
    AEFX_CLR_STRUCT(item);
    item.type = AEGP_CollectionItemType_LAYER;
    item.u.layer.layerH = layer;
    return item;
}

// ---- Copying out of the pre-comp (EX_Util_copy.cpp)

// Copies every layer of the pre-comp into the composition that holds precompLayer, by script, and appends the copies to
// *newLayers. prefix is not used. With fix_random_expressions the copies' expressions are seeded.
A_Err copy_layers_to_parent(const PluginInfo* info, AEGP_LayerH precompLayer, char* prefix,
                            AEGP_Collection2H* newLayers);

// The 1-based number by which scripts address a project item. *index is left untouched when the item is not found.
A_Err find_item_index(const PluginInfo* info, AEGP_ItemH item, int* index);

// ---- Random seeds (EX_Util_seed.cpp)

// Puts a fixed seed in front of every expression on the layer's own streams.
A_Err add_random_seed_to_all_expressions(const PluginInfo* info, AEGP_LayerH layer, int seed);

// The same for one AEGP_LayerStream; a stream that is illegal for the layer or does not vary is left alone.
A_Err add_random_seed_to_expressions(const PluginInfo* info, AEGP_LayerH layer, int seed, int whichStream);

// ---- Stack order and the 3D switch (EX_Util_order.cpp)

// Moves each layer to the top of its stack, first item first: the last one ends on top.
A_Err move_layers_to_top(const PluginInfo* info, AEGP_Collection2H layers);

// Moves each layer to the index, last item first.
A_Err move_layers_to_index(const PluginInfo* info, AEGP_Collection2H layers, int index);

A_Err set_all_layers_to_3D(const PluginInfo* info, AEGP_Collection2H layers);

// ---- Timing (EX_Util_timing.cpp)

// Gives the topmost layers.size() layers of the pre-comp layer's composition its offset, and trims them to its span.
// Times are added and compared by value alone: all are taken to share one scale.
A_Err match_precomp_timing(const PluginInfo* info, AEGP_LayerH precompLayer, std::vector<int> layers);

// ---- Sources (EX_Util_source.cpp)

// How many layers of the whole project have the item as their source. *count is also written after a failing call, with
// what was counted so far.
A_Err item_use_count(const PluginInfo* info, AEGP_ItemH item, int* count);

// Deletes the layer, then its source item, without asking who else uses it.
A_Err delete_layer_and_source(const PluginInfo* info, AEGP_LayerH layer);

// ---- The null that stands in for the pre-comp layer (EX_Util_null.cpp)

// Makes a null beside the pre-comp layer, named after it, with its timing, pixel aspect ratio and 3D switch.
// *newNull also holds the null when a step after its making failed.
A_Err create_matching_null(const PluginInfo* info, AEGP_LayerH precompLayer, AEGP_LayerH* newNull);

// ---- Transform (EX_Util_transform.cpp)

// Copies the transform streams, static or with keyframes. *changed becomes 1 when one of them varies over time, and is
// otherwise left alone.
A_Err match_transform(const PluginInfo* info, AEGP_LayerH destination, AEGP_LayerH source, unsigned char* changed);

// The same for one AEGP_LayerStream. Its references are disposed only on success.
A_Err match_keyframes(const PluginInfo* info, AEGP_LayerH destination, AEGP_LayerH source, int stream,
                      unsigned char* changed);

// ---- Effects (EX_Util_effects.cpp)

// Copies the effects to each layer. A layer on which that fails does not stop the others: only the collection's own
// errors are returned.
A_Err copy_effects_to_all_layers(const PluginInfo* info, AEGP_LayerH source, AEGP_Collection2H layers);

// Re-applies the source's effects, with their state, parameters, keyframes and expressions.
A_Err copy_effects_to_layer(const PluginInfo* info, AEGP_LayerH source, AEGP_LayerH destination);

// ---- Parents (EX_Util_parents.cpp)
//
// A parent list has one entry for each layer of the pre-comp, in stack order: the index of its parent there, or -1.
// Once the copies stand at the top of their composition, the same indices describe them.

// Appends an entry for each layer of the pre-comp and removes the links. After a failure the entries mean nothing.
A_Err clear_parents_in_precomp(const PluginInfo* info, AEGP_LayerH precompLayer, std::vector<int>* parents);

// Makes the links again among the layers of the composition.
A_Err reset_parents(const PluginInfo* info, AEGP_CompH comp, std::vector<int> parents);

// Makes the links again inside the pre-comp.
A_Err reset_precomp_parents(const PluginInfo* info, AEGP_LayerH precompLayer, std::vector<int> parents);

// Parents every layer whose entry is -1 to the given layer, in that layer's composition.
A_Err parent_unparented_to(const PluginInfo* info, AEGP_LayerH parent, std::vector<int> parents);

// ---- Parents by script (EX_Util_reparent.cpp)

// Clears, by script, the parent of every layer whose entry is -1.
A_Err reset_unparented_layers(const PluginInfo* info, AEGP_CompH parentComp, std::vector<int> parents);

// ---- Names (EX_Util_names.cpp)

// The layer's name, or its source's where it has none of its own. name holds 32 bytes.
A_Err get_layer_name(const PluginInfo* info, AEGP_LayerH layer, char* name);

// The same as wide text with as many characters as the narrow name has bytes, "#" filling what conversion leaves.
A_Err get_layer_name_w(const PluginInfo* info, AEGP_LayerH layer, std::wstring* name);

// Renames the layer to prefix, separator, name, separator, suffix, cut to 255 characters. A null or empty prefix or
// suffix goes with its separator. A name that cannot be read counts as what was read of it.
A_Err modify_layer_name(const PluginInfo* info, AEGP_LayerH layer, const wchar_t* prefix, const wchar_t* suffix,
                        const wchar_t* separator);

// Renames each layer and repairs the project's expressions after each. Failed repairs are ignored.
A_Err modify_all_layer_names(const PluginInfo* info, AEGP_Collection2H layers, const wchar_t* prefix,
                             const wchar_t* suffix, const wchar_t* separator);

// ---- Expressions (EX_Util_expressions.cpp)

// Lets the host repair expressions that name a renamed layer. The names go into the script as they are. Throws
// std::range_error for a name that has no UTF-8 form.
A_Err fix_all_expressions(const PluginInfo* info, const wchar_t* oldName, const wchar_t* newName);

// ---- Not called by anything: part of the set of operations, but no command needs them

// count times: the layer at index goes to the top (EX_Util_order.cpp).
A_Err order_layers_to_top(const PluginInfo* info, AEGP_CompH comp, int index, int count);

// Makes a white solid of the pre-comp's size and pixel aspect ratio, with the layer's timing (EX_Util_solid.cpp).
A_Err create_matching_solid(const PluginInfo* info, AEGP_LayerH precompLayer, AEGP_LayerH* newSolid);

// The composition that is the layer's source (EX_Util_parents.cpp).
A_Err get_comp_from_precomp(const PluginInfo* info, AEGP_LayerH precompLayer, AEGP_CompH* comp);
