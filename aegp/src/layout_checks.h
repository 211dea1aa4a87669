// The macros of the layout checks. Only names that the interface itself publishes may be given to them.
#pragma once

#include <stddef.h>

// First of all: the kit's headers rely on it.
#include "AEConfig.h"

#include "AE_Effect.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"

#define CHECK_SIZE(type, size, alignment) \
    static_assert(sizeof(type) == (size) && alignof(type) == (alignment), #type " is not laid out as the host's")

#define CHECK_FIELD(type, field, offset) \
    static_assert(offsetof(type, field) == (offset), #type "::" #field " is not where the host has it")

#define CHECK_SIGNED(type) static_assert(static_cast<type>(-1) < static_cast<type>(0), #type " is not signed")
#define CHECK_UNSIGNED(type) static_assert(static_cast<type>(-1) > static_cast<type>(0), #type " is not unsigned")

#define CHECK_VALUE(name, value) static_assert((name) == (value), #name " does not have the host's value")

#define CHECK_TEXT(name, text) static_assert(layout::same_text(name, text), #name " is not the host's text")

namespace layout {

constexpr bool same_text(const char* a, const char* b) {
    while (*a != '\0' && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

}  // namespace layout
