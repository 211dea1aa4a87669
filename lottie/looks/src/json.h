// Reading members of the animation's JSON with what players take for missing ones.
#pragma once

#include <rapidjson/document.h>

#include <string>
#include <string_view>

#include "base/json_memory.h"

namespace lottie::looks {

using JsonPool = rapidjson::MemoryPoolAllocator<host::base::JsonMemory>;
using Json = rapidjson::GenericValue<rapidjson::UTF8<>, JsonPool>;
using JsonDocument = rapidjson::GenericDocument<rapidjson::UTF8<>, JsonPool, host::base::JsonMemory>;

// Null when `object` is no object or has no such member.
const Json* member(const Json& object, const char* name);

double number_member(const Json& object, const char* name, double missing);
bool has_number(const Json& object, const char* name);
std::string text_member(const Json& object, const char* name);

// Players take numbers other than 0 and true alike.
bool is_truthy(const Json& object, const char* name);

// The elements of an array; an empty range for anything else and for null.
Json::ConstArray elements(const Json* array);
// Those of an array member.
Json::ConstArray array_member(const Json& object, const char* name);

}  // namespace lottie::looks
