// The label that says how the fields of footage are interlaced.
#pragma once

#include <stdint.h>

typedef uint32_t FIEL_Type;
enum {
    FIEL_Type_FRAME_RENDERED = 0,
    FIEL_Type_INTERLACED,
    FIEL_Type_HALF_HEIGHT,
    FIEL_Type_FIELD_DOUBLED,
    FIEL_Type_UNSPECIFIED,
};

typedef uint32_t FIEL_Order;
enum {
    FIEL_Order_UPPER_FIRST = 0,
    FIEL_Order_LOWER_FIRST,
};

// Packed to two bytes: 18 bytes long, with type directly after version.
#pragma pack(push, 2)
typedef struct FIEL_Label {
    uint32_t signature;
    int16_t version;
    FIEL_Type type;
    FIEL_Order order;
    uint32_t reserved;
} FIEL_Label;
#pragma pack(pop)
