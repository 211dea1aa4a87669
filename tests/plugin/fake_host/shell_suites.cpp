// Suites of the fake host: commands, scripts, memory, collections.
#include <cstring>

#include "fake_host.h"

namespace fake {

namespace {

using Arguments = std::vector<std::string>;

A_Err get_unique_command(AEGP_Command* command) {
    return host().call("Command1.GetUniqueCommand", {}, [&] { *command = 77; });
}

A_Err insert_menu_command(AEGP_Command command, const A_char* name, AEGP_MenuID menu, A_long after) {
    const Arguments arguments = {number(command), name, number(A_long{menu}), number(after)};
    return host().call("Command1.InsertMenuCommand", arguments);
}

A_Err set_menu_command_name(AEGP_Command command, const A_char* name) {
    return host().call("Command1.SetMenuCommandName", {number(command), name});
}

A_Err enable_command(AEGP_Command command) {
    return host().call("Command1.EnableCommand", {number(command)});
}

A_Err disable_command(AEGP_Command command) {
    return host().call("Command1.DisableCommand", {number(command)});
}

A_Err register_command_hook(AEGP_PluginID id, AEGP_HookPriority priority, AEGP_Command command, AEGP_CommandHook hook,
                            AEGP_CommandRefcon refcon) {
    const Arguments arguments = {number(id), number(priority), number(command), refcon == nullptr ? "null" : "refcon"};
    return host().call("Register5.RegisterCommandHook", arguments, [&] { host().command_hook = hook; });
}

A_Err register_update_menu_hook(AEGP_PluginID id, AEGP_UpdateMenuHook hook, AEGP_UpdateMenuRefcon refcon) {
    const Arguments arguments = {number(id), refcon == nullptr ? "null" : "refcon"};
    return host().call("Register5.RegisterUpdateMenuHook", arguments, [&] { host().update_menu_hook = hook; });
}

A_Err report_info(AEGP_PluginID id, const A_char* text) {
    return host().call("Utility3.ReportInfo", {number(id), text});
}

A_Err start_undo_group(const A_char* name) {
    return host().call("Utility6.StartUndoGroup", {name});
}

A_Err end_undo_group() {
    return host().call("Utility6.EndUndoGroup", {});
}

A_Err execute_script(AEGP_PluginID id, const A_char* script, A_Boolean platform_encoding, AEGP_MemHandle* result,
                     AEGP_MemHandle* error) {
    const auto label = host().script_labels.find(script);
    const Arguments arguments = {number(id), label == host().script_labels.end() ? script : label->second,
                                 platform_encoding ? "true" : "false", result == nullptr ? "null" : "result",
                                 error == nullptr ? "null" : "error"};
    return host().call("Utility6.ExecuteScript", arguments, [&] {
        const std::string text = host().on_script(script);
        if (result != nullptr && !host().loses_script_results) {
            *result = handle(host().add_memory(text));
            host().opened(text_of(*result));
        }
    });
}

A_Err lock_mem_handle(AEGP_MemHandle memory, void** text) {
    return host().call("Memory1.LockMemHandle", {text_of(memory)}, [&] {
        if (memory == nullptr) return A_Err_PARAMETER;
        *text = object<Memory>(memory)->text.data();
        host().memory_locked_last = *text;
        host().opened("lock of " + text_of(memory));
        return A_Err_NONE;
    });
}

A_Err unlock_mem_handle(AEGP_MemHandle memory) {
    return host().call("Memory1.UnlockMemHandle", {text_of(memory)},
                       [&] { host().closed("lock of " + text_of(memory)); });
}

A_Err free_mem_handle(AEGP_MemHandle memory) {
    return host().call("Memory1.FreeMemHandle", {text_of(memory)}, [&] {
        object<Memory>(memory)->text.assign("freed");
        host().closed(text_of(memory));
    });
}

A_Err new_collection(AEGP_PluginID id, AEGP_Collection2H* collection) {
    return host().call("Collection2.NewCollection", {number(id)}, [&] {
        *collection = handle(host().add_collection("", {}));
        host().opened(text_of(*collection));
    });
}

A_Err dispose_collection(AEGP_Collection2H collection) {
    return host().call("Collection2.DisposeCollection", {text_of(collection)},
                       [&] { host().closed(text_of(collection)); });
}

A_Err get_collection_num_items(AEGP_Collection2H collection, A_u_long* count) {
    return host().call("Collection2.GetCollectionNumItems", {text_of(collection)}, [&] {
        if (collection == nullptr) return A_Err_PARAMETER;
        *count = static_cast<A_u_long>(object<Collection>(collection)->items.size());
        return A_Err_NONE;
    });
}

A_Err get_collection_item_by_index(AEGP_Collection2H collection, A_u_long index, AEGP_CollectionItemV2* item) {
    return host().call("Collection2.GetCollectionItemByIndex", {text_of(collection), number(index)},
                       [&] { *item = object<Collection>(collection)->items.at(index); });
}

// A member that should be zero and is not would show in the line.
A_Err collection_push_back(AEGP_Collection2H collection, const AEGP_CollectionItemV2* item) {
    AEGP_CollectionItemV2 clean = {};
    clean.type = item->type;
    clean.u.layer = item->u.layer;
    const bool only_layer = std::memcmp(&clean.u, &item->u, sizeof clean.u) == 0 && item->stream_refH == nullptr;
    const Arguments arguments = {text_of(collection), number(A_long{item->type}), text_of(item->u.layer.layerH),
                                 only_layer ? "rest zero" : "rest not zero"};
    return host().call("Collection2.CollectionPushBack", arguments,
                       [&] { object<Collection>(collection)->items.push_back(*item); });
}

}  // namespace

void add_shell_suites(SuiteTables& tables) {
    auto& command = tables.add<AEGP_CommandSuite1>("AEGP Command Suite 1");
    command.AEGP_GetUniqueCommand = get_unique_command;
    command.AEGP_InsertMenuCommand = insert_menu_command;
    command.AEGP_SetMenuCommandName = set_menu_command_name;
    command.AEGP_EnableCommand = enable_command;
    command.AEGP_DisableCommand = disable_command;

    auto& registration = tables.add<AEGP_RegisterSuite5>("AEGP Register Suite 6");
    registration.AEGP_RegisterCommandHook = register_command_hook;
    registration.AEGP_RegisterUpdateMenuHook = register_update_menu_hook;

    auto& utility3 = tables.add<AEGP_UtilitySuite3>("AEGP Utility Suite 7");
    utility3.AEGP_ReportInfo = report_info;

    auto& utility6 = tables.add<AEGP_UtilitySuite6>("AEGP Utility Suite 13");
    utility6.AEGP_StartUndoGroup = start_undo_group;
    utility6.AEGP_EndUndoGroup = end_undo_group;
    utility6.AEGP_ExecuteScript = execute_script;

    auto& memory = tables.add<AEGP_MemorySuite1>("AEGP Memory Suite 1");
    memory.AEGP_LockMemHandle = lock_mem_handle;
    memory.AEGP_UnlockMemHandle = unlock_mem_handle;
    memory.AEGP_FreeMemHandle = free_mem_handle;

    auto& collection = tables.add<AEGP_CollectionSuite2>("AEGP Collection Suite 2");
    collection.AEGP_NewCollection = new_collection;
    collection.AEGP_DisposeCollection = dispose_collection;
    collection.AEGP_GetCollectionNumItems = get_collection_num_items;
    collection.AEGP_GetCollectionItemByIndex = get_collection_item_by_index;
    collection.AEGP_CollectionPushBack = collection_push_back;
}

}  // namespace fake
