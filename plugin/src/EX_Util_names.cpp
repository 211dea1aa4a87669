// Reading and changing layer names.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"
#include "platform_text.h"
#include "string_util.h"

namespace {

constexpr std::size_t kMaxNameCharacters = 255;

bool is_given(const wchar_t* text) {
    return text != nullptr && *text != L'\0';
}

}  // namespace

A_Err get_layer_name(const PluginInfo* info, AEGP_LayerH layer, char* name) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;

    ERR(suites.LayerSuite5()->AEGP_GetLayerName(layer, name, nullptr));
    if (name != nullptr && *name != '\0') return err;
    ERR(suites.LayerSuite5()->AEGP_GetLayerName(layer, nullptr, name));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err get_layer_name_w(const PluginInfo* info, AEGP_LayerH layer, std::wstring* name) {
    char narrow[AEGP_MAX_LAYER_NAME_SIZE] = {};
    const A_Err err = get_layer_name(info, layer, narrow);
    *name = padded_wide_text(narrow);
    return err;
}

A_Err modify_layer_name(const PluginInfo* info, AEGP_LayerH layer, const wchar_t* prefix, const wchar_t* suffix,
                        const wchar_t* separator) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    std::wstring name;
    A_UTF16Char new_name[kMaxNameCharacters + 1] = {};

    // A layer whose name cannot be read is still renamed.
    (void)get_layer_name_w(info, layer, &name);
    if (is_given(prefix)) name = prefix + (separator + name);
    if (is_given(suffix)) name += std::wstring(separator) + suffix;
    copyConvertStringLiteralIntoUTF16(first_characters(name, kMaxNameCharacters).c_str(), new_name);
    ERR(suites.LayerSuite6()->AEGP_SetLayerName(layer, new_name));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}

A_Err modify_all_layer_names(const PluginInfo* info, AEGP_Collection2H layers, const wchar_t* prefix,
                             const wchar_t* suffix, const wchar_t* separator) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;
    A_u_long count = 0;
    AEGP_CollectionItemV2 item = {};  // outside the loop: when reading fails, the last item read is handled again

    ERR(suites.CollectionSuite2()->AEGP_GetCollectionNumItems(layers, &count));
    for (A_u_long i = 0; i < count; ++i) {
        ERR(suites.CollectionSuite2()->AEGP_GetCollectionItemByIndex(layers, i, &item));
        if (!is_layer_item(item)) continue;
        const AEGP_LayerH layer = item.u.layer.layerH;
        std::wstring old_name;
        std::wstring new_name;
        // Neither an unreadable name nor a failed repair stops the renaming.
        (void)get_layer_name_w(info, layer, &old_name);
        ERR(modify_layer_name(info, layer, prefix, suffix, separator));
        (void)get_layer_name_w(info, layer, &new_name);
        (void)fix_all_expressions(info, old_name.c_str(), new_name.c_str());
    }
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
