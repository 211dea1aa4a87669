// Colours and font of the application's dark look.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

namespace desktop::theme {

inline constexpr QColor kWindow{0x23, 0x23, 0x23};
inline constexpr QColor kText{0xD0, 0xD0, 0xD0};
inline constexpr QColor kDisabledText{0x6E, 0x6E, 0x6E};
inline constexpr QColor kField{0x16, 0x16, 0x16};
inline constexpr QColor kEdge{0x3C, 0x3C, 0x3C};
inline constexpr QColor kStrongEdge{0x8A, 0x8A, 0x8A};  // of boxes, circles and buttons
inline constexpr QColor kDisabledEdge{0x4A, 0x4A, 0x4A};
inline constexpr QColor kHover{0x2E, 0x2E, 0x2E};
inline constexpr QColor kPressed{0x3A, 0x3A, 0x3A};
inline constexpr QColor kAccent{0x2D, 0x8C, 0xEB};
inline constexpr QColor kAccentHover{0x4A, 0x9E, 0xF0};
inline constexpr QColor kAccentPressed{0x1B, 0x73, 0xCC};
inline constexpr QColor kOnAccent{0xFF, 0xFF, 0xFF};
inline constexpr QColor kWarning{0xE6, 0xA2, 0x3C};
inline constexpr QColor kError{0xE3, 0x4B, 0x4B};

// A free humanist sans if installed. Widths depend only on the display's scale, so one layout fits every scale.
QFont font();
QPalette palette();

}  // namespace desktop::theme
