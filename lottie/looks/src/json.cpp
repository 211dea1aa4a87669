// Reading members of the animation's JSON with what players take for missing ones.
#include "json.h"

namespace lottie::looks {

const Json* member(const Json& object, const char* name) {
    if (!object.IsObject()) return nullptr;
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() ? nullptr : &found->value;
}

double number_member(const Json& object, const char* name, double missing) {
    const Json* value = member(object, name);
    return value != nullptr && value->IsNumber() ? value->GetDouble() : missing;
}

bool has_number(const Json& object, const char* name) {
    const Json* value = member(object, name);
    return value != nullptr && value->IsNumber();
}

std::string text_member(const Json& object, const char* name) {
    const Json* value = member(object, name);
    return value != nullptr && value->IsString() ? std::string(value->GetString(), value->GetStringLength())
                                                 : std::string();
}

bool is_truthy(const Json& object, const char* name) {
    const Json* value = member(object, name);
    if (value == nullptr) return false;
    return value->IsTrue() || (value->IsNumber() && value->GetDouble() != 0);
}

Json::ConstArray elements(const Json* array) {
    static const Json kNothing(rapidjson::kArrayType);
    return array != nullptr && array->IsArray() ? array->GetArray() : kNothing.GetArray();
}

Json::ConstArray array_member(const Json& object, const char* name) {
    return elements(member(object, name));
}

}  // namespace lottie::looks
