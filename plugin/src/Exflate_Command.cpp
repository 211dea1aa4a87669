// The command driver: one run from the dialog to the closing alert.
#include <jsmn.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"
#include "Exflate.h"
#include "Exflate_Strings.h"
#include "PluginInfo.h"
#include "embedded_jsx.h"
#include "platform_text.h"

namespace {

constexpr int kMaxPrefixBytes = 50;
constexpr int kMaxTokens = 128;

// The dialog's result is an array of six; these are jsmn's numbers of its elements.
enum {
    kTokenCopyAttributes = 1,
    kTokenDeleteSource,
    kTokenKeepInComp,
    kTokenPrefix,
    kTokenPrependPrecompName,
    kTokenFixRandomExpressions,
    kTokenCount,
};

// What one run keeps from one selected layer to the next.
struct CommandRun {
    CommandOptions options = {};
    char prefix[kMaxPrefixBytes + 1] = {};
    PluginInfo info = {};
    AEGP_CompH parent_comp = nullptr;  // that of the first pre-comp layer
    A_long layer_index = -1;
    int not_deleted = 0;              // sources kept because they are used elsewhere, less those deleted later
    std::map<int, int> kept_sources;  // item id -> how many pre-comp layers of this run could not delete it
};

// *result is the dialog's text, still the host's and never freed: empty after Cancel and after a failure.
A_Err show_dialog(AEGP_SuiteHandler& suites, const char** result) {
    A_Err err = A_Err_NONE;
    AEGP_MemHandle handle = nullptr;
    void* text = nullptr;

    ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(S_my_id, find_embedded_file("mainPanel.jsx", nullptr), false,
                                                   &handle, nullptr));
    ERR(suites.MemorySuite1()->AEGP_LockMemHandle(handle, &text));
    ERR(suites.MemorySuite1()->AEGP_UnlockMemHandle(handle));
    *result = text != nullptr ? static_cast<const char*>(text) : "";
    return err;
}

bool is_true(const char* text, const jsmntok_t& token) {
    return text[token.start] == 't';
}

int length_of(const jsmntok_t& token) {
    return token.end - token.start;
}

// The prefix is taken byte for byte: JSON escapes in it are not decoded.
void read_choices(const char* text, const jsmntok_t* tokens, CommandRun* run) {
    const jsmntok_t& prefix = tokens[kTokenPrefix];
    std::memcpy(run->prefix, text + prefix.start, static_cast<std::size_t>(length_of(prefix)));

    CommandOptions& options = run->options;
    options.copy_attributes = is_true(text, tokens[kTokenCopyAttributes]);
    options.delete_source = is_true(text, tokens[kTokenDeleteSource]);
    options.keep_in_comp = is_true(text, tokens[kTokenKeepInComp]);
    options.has_prefix = run->prefix[0];
    options.prepend_precomp_name = is_true(text, tokens[kTokenPrependPrecompName]);
    options.fix_random_expressions = is_true(text, tokens[kTokenFixRandomExpressions]);
}

// The pre-comp layer's name, the typed prefix, or both with "_" between them, as the choices say.
std::wstring name_prefix(const CommandRun& run, AEGP_LayerH precomp_layer) {
    std::wstring prefix;
    if (run.options.prepend_precomp_name) {
        // A name that cannot be read is no reason to stop; this also runs after an earlier failure.
        (void)get_layer_name_w(&run.info, precomp_layer, &prefix);
    }
    const std::wstring typed = wide_text(run.prefix);
    if (!typed.empty()) {
        if (!prefix.empty()) prefix += L"_";
        prefix += typed;
    }
    return prefix;
}

// The null stays when it carries keyframes, and is then selected with the new layers.
A_Err keep_null(const CommandRun& run, AEGP_SuiteHandler& suites, AEGP_LayerH null_layer,
                AEGP_Collection2H new_layers) {
    A_Err err = A_Err_NONE;
    const AEGP_CollectionItemV2 item = layer_item(null_layer);

    ERR(suites.LayerSuite6()->AEGP_ReorderLayer(null_layer, run.layer_index));
    ERR(suites.CollectionSuite2()->AEGP_CollectionPushBack(new_layers, &item));
    return err;
}

A_Err drop_null(const CommandRun& run, AEGP_LayerH null_layer, const std::vector<int>& parents) {
    A_Err err = A_Err_NONE;
    ERR(reset_unparented_layers(&run.info, run.parent_comp, parents));
    ERR(delete_layer_and_source(&run.info, null_layer));
    return err;
}

// Deletes the source when the pre-comp layer is all that uses it; the layer goes with it.
A_Err delete_source_if_unused(CommandRun* run, AEGP_SuiteHandler& suites, AEGP_LayerH precomp_layer,
                              bool* source_deleted) {
    A_Err err = A_Err_NONE;
    AEGP_ItemH source_item = nullptr;
    int uses = 0;
    A_long source_id = -1;

    ERR(suites.LayerSuite5()->AEGP_GetLayerSourceItem(precomp_layer, &source_item));
    ERR(item_use_count(&run->info, source_item, &uses));
    ERR(suites.ItemSuite6()->AEGP_GetItemID(source_item, &source_id));
    if (uses == 1) {
        ERR(suites.ItemSuite6()->AEGP_DeleteItem(source_item));
        *source_deleted = true;
        // Earlier layers of this run that had to leave the source no longer count.
        const auto kept = run->kept_sources.find(source_id);
        if (kept != run->kept_sources.end()) {
            run->not_deleted -= kept->second;
            run->kept_sources.erase(kept);
        }
    } else {
        ++run->not_deleted;
        ++run->kept_sources[source_id];
    }
    return err;
}

A_Err remove_precomp_layer(CommandRun* run, AEGP_SuiteHandler& suites, AEGP_LayerH precomp_layer) {
    A_Err err = A_Err_NONE;
    bool source_deleted = false;

    if (run->options.delete_source) {
        ERR(delete_source_if_unused(run, suites, precomp_layer, &source_deleted));
    }
    if (!source_deleted) ERR(suites.LayerSuite4()->AEGP_DeleteLayer(precomp_layer));
    return err;
}

// Moves the layers of one pre-comp out into the composition that holds the pre-comp layer. err is the run's so far.
A_Err exflate_layer(A_Err err, CommandRun* run, AEGP_SuiteHandler& suites, AEGP_LayerH precomp_layer, bool is_last) {
    const PluginInfo* info = &run->info;
    const bool copy_attributes = run->options.copy_attributes;
    AEGP_LayerH null_layer = nullptr;
    std::vector<int> parents;
    AEGP_Collection2H new_layers = nullptr;
    A_Boolean is_3d = false;
    A_long index_before_move = -1;  // read but not used
    unsigned char changed = 0;

    ERR(create_matching_null(info, precomp_layer, &null_layer));
    ERR(clear_parents_in_precomp(info, precomp_layer, &parents));
    ERR(suites.CollectionSuite2()->AEGP_NewCollection(S_my_id, &new_layers));
    ERR(copy_layers_to_parent(info, precomp_layer, run->prefix, &new_layers));
    if (copy_attributes) {
        ERR(suites.LayerSuite5()->AEGP_IsLayer3D(precomp_layer, &is_3d));
        if (is_3d) ERR(set_all_layers_to_3D(info, new_layers));
    }
    if (run->parent_comp == nullptr) {
        ERR(suites.LayerSuite5()->AEGP_GetLayerParentComp(precomp_layer, &run->parent_comp));
    }
    ERR(suites.LayerSuite5()->AEGP_GetLayerIndex(precomp_layer, &index_before_move));
    ERR(move_layers_to_top(info, new_layers));
    ERR(reset_parents(info, run->parent_comp, parents));
    ERR(reset_precomp_parents(info, precomp_layer, parents));
    if (copy_attributes) {
        ERR(match_precomp_timing(info, precomp_layer, parents));
        ERR(parent_unparented_to(info, null_layer, parents));
        ERR(match_transform(info, null_layer, precomp_layer, &changed));
        ERR(copy_effects_to_all_layers(info, precomp_layer, new_layers));
    }

    const std::wstring prefix = name_prefix(*run, precomp_layer);
    if (!prefix.empty()) ERR(modify_all_layer_names(info, new_layers, prefix.c_str(), nullptr, L"_"));

    ERR(suites.LayerSuite6()->AEGP_GetLayerIndex(precomp_layer, &run->layer_index));
    ERR(move_layers_to_index(info, new_layers, run->layer_index));
    if (copy_attributes && changed) {
        ERR(keep_null(*run, suites, null_layer, new_layers));
    } else {
        ERR(drop_null(*run, null_layer, parents));
    }
    if (run->options.keep_in_comp) {
        ERR(suites.LayerSuite4()->AEGP_SetLayerFlag(precomp_layer, AEGP_LayerFlag_VIDEO_ACTIVE, false));
    } else {
        ERR(remove_precomp_layer(run, suites, precomp_layer));
    }
    if (is_last) ERR(suites.CompSuite6()->AEGP_SetSelection(run->parent_comp, new_layers));
    ERR(suites.CollectionSuite2()->AEGP_DisposeCollection(new_layers));
    return err;
}

// Every pre-comp layer of the selection in turn; *count becomes the number of all selected items. err is the run's so
// far. A missing suite's exception passes through, which leaves the undo group open; any other becomes a code, so that
// the group is closed.
A_Err exflate_selection(A_Err err, CommandRun* run, AEGP_SuiteHandler& suites, A_u_long* count) try {
    AEGP_Collection2H selection = nullptr;  // never disposed

    ERR(get_selected_layers(&run->info, &selection));
    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(selection, count));
    for (A_u_long i = 0; i < *count; ++i) {
        AEGP_CollectionItemV2 item = {};
        unsigned char is_precomp = 0;
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(selection, i, &item));
        ERR(is_layer_precomp(&run->info, &item, &is_precomp));
        if (is_precomp) err = exflate_layer(err, run, suites, item.u.layer.layerH, i + 1 == *count);
    }
    return err;
} catch (A_Err) {
    throw;
} catch (...) {
    return A_Err_GENERIC;
}

// The script that tells the user about kept sources; empty when there is nothing to tell.
const char* closing_alert(int not_deleted, A_u_long selected_count) {
    if (not_deleted == 1 && selected_count == 1) {
        return "alert(\"The source could not be deleted because it is being used in other places\", "
               "\"Source Not Deleted\");";
    }
    if (not_deleted == 1 && selected_count > 1) {
        return "alert(\"A source could not be deleted because it is being used in other places\", "
               "\"Source Not Deleted\");";
    }
    if (not_deleted > 1) {
        return "alert(\"Some (or all) sources could not be deleted because they are being used in other places\", "
               "\"Sources Not Deleted\");";
    }
    return "";
}

}  // namespace

A_Err CommandHook(AEGP_GlobalRefcon /*plugin_refconP*/, AEGP_CommandRefcon /*refconP*/, AEGP_Command command,
                  AEGP_HookPriority /*hook_priority*/, A_Boolean already_handledB, A_Boolean* handledPB) try {
    if (command != S_Exflate_cmd || already_handledB) return A_Err_NONE;
    *handledPB = true;

    AEGP_SuiteHandler suites(sP);
    A_Err err = A_Err_NONE;
    A_Err err2 = A_Err_NONE;

    const char* choices = "";
    ERR(show_dialog(suites, &choices));
    if (*choices == '\0') return err;

    jsmn_parser parser;
    jsmntok_t tokens[kMaxTokens] = {};
    jsmn_init(&parser);
    if (jsmn_parse(&parser, choices, std::strlen(choices), tokens, kMaxTokens) != kTokenCount) return err;

    if (length_of(tokens[kTokenPrefix]) > kMaxPrefixBytes) {
        AEGP_MemHandle handle = nullptr;
        ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(S_my_id, find_embedded_file("prefixTooLong.jsx", nullptr), false,
                                                       &handle, nullptr));
        return err;
    }

    CommandRun run;
    A_u_long count = 0;
    run.info = {sP, S_my_id, &run.options};
    read_choices(choices, tokens, &run);

    ERR(suites.UtilitySuite6()->AEGP_StartUndoGroup(GetStringPtr(StrID_MenuExflate)));
    err = exflate_selection(err, &run, suites, &count);
    ERR2(suites.UtilitySuite6()->AEGP_EndUndoGroup());

    // The script is run even when it is empty.
    const char* alert = closing_alert(run.not_deleted, count);
    ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(S_my_id, alert, false, nullptr, nullptr));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
} catch (...) {
    return A_Err_GENERIC;
}
