// app.settings and the enumeration PREFType.
#include <array>

#include "engine/bind.h"

namespace host::script {

namespace {

// The application's preference files, by number. The first is the default.
constexpr std::array kPreferenceTypes = {
    "PREF_Type_MACHINE_SPECIFIC",
    "PREF_Type_MACHINE_INDEPENDENT",
    "PREF_Type_MACHINE_INDEPENDENT_RENDER",
    "PREF_Type_MACHINE_INDEPENDENT_OUTPUT",
    "PREF_Type_MACHINE_INDEPENDENT_COMPOSITION",
    "PREF_Type_MACHINE_SPECIFIC_TEXT",
    "PREF_Type_MACHINE_SPECIFIC_PAINT",
};

constexpr std::size_t kLongestValue = 1999;  // bytes

// A setting's section; those outside the default file carry the file's name in front.
std::string section_of(ScriptCall& call, duk_idx_t type_argument) {
    std::string section = call.text(0);
    if (!call.given(type_argument)) return section;
    const int type = call.whole_number(type_argument);
    if (type < 0 || static_cast<std::size_t>(type) >= kPreferenceTypes.size()) {
        call.fail("a member of PREFType was expected");
    }
    if (type == 0) return section;
    return std::string(kPreferenceTypes[static_cast<std::size_t>(type)]) + ": " + section;
}

void check_length(ScriptCall& call, const std::string& value) {
    if (value.size() > kLongestValue) {
        call.fail("the value of a setting is longer than " + std::to_string(kLongestValue) + " bytes");
    }
}

duk_ret_t have_setting(ScriptCall& call) {
    const std::string* value = call.environment.settings.find(section_of(call, 2), call.text(1));
    return call.give(value != nullptr && !value->empty());
}

duk_ret_t get_setting(ScriptCall& call) {
    const std::string key = call.text(1);
    const std::string* value = call.environment.settings.find(section_of(call, 2), key);
    if (value == nullptr) call.fail("there is no setting \"" + key + "\" in section \"" + call.text(0) + "\"");
    check_length(call, *value);
    return call.give(std::string_view(*value));
}

duk_ret_t save_setting(ScriptCall& call) {
    const std::string value = call.text(2);
    check_length(call, value);
    call.environment.settings.save(section_of(call, 3), call.text(1), value);
    return call.nothing();
}

constexpr ScriptMethod kMethods[] = {
    {"haveSetting", 3, guarded<have_setting>},
    {"getSetting", 3, guarded<get_setting>},
    {"saveSetting", 4, guarded<save_setting>},
};

constexpr ScriptClass kSettings = {ClassId::settings, nullptr, {}, nullptr, kMethods, {}};

}  // namespace

void define_settings(duk_context* ctx) {
    ScriptEnvironment::of(ctx).define_class(ctx, kSettings);
    const duk_idx_t types = duk_push_object(ctx);
    for (std::size_t i = 0; i < kPreferenceTypes.size(); ++i) {
        duk_push_string(ctx, kPreferenceTypes[i]);
        duk_push_uint(ctx, static_cast<duk_uint_t>(i));
        duk_def_prop(ctx, types, DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_SET_ENUMERABLE);
    }
    duk_put_global_string(ctx, "PREFType");
}

}  // namespace host::script
