// Repairing expressions after a layer was renamed.
#include "AEGP_SuiteHandler.h"
#include "AE_Macros.h"
#include "EX_Util.h"
#include "platform_text.h"

A_Err fix_all_expressions(const PluginInfo* info, const wchar_t* oldName, const wchar_t* newName) try {
    AEGP_SuiteHandler suites(info->pica_basicP);
    A_Err err = A_Err_NONE;

    // Nothing in the names is escaped.
    const std::string script =
        "app.project.autoFixExpressions(\"" + utf8_text(oldName) + "\",\"" + utf8_text(newName) + "\");";
    ERR(suites.UtilitySuite6()->AEGP_ExecuteScript(info->plugin_id, script.c_str(), false, nullptr, nullptr));
    return err;
} catch (A_Err missing_suite) {
    return missing_suite;
}
