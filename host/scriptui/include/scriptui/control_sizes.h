// Sizes of controls that do not depend on text; in pixels of the layout.
#pragma once

namespace host::scriptui::sizes {

inline constexpr double kEditHeight = 24;
inline constexpr double kEditPadding = 7;  // between the edge of an edit field and its text
inline constexpr double kEditWidth = 100;  // the minimum, unless set
inline constexpr double kEditLines = 3;    // of a multi-line field
inline constexpr double kTickHeight = 20;  // check boxes and radio buttons
inline constexpr double kGlyph = 14;       // the box or circle in front of their text
inline constexpr double kGlyphGap = 8;
inline constexpr double kFocusMargin = 2;  // before the glyph, and after the text
inline constexpr double kButtonHeight = 26;
inline constexpr double kButtonWidth = 80;  // the minimum
inline constexpr double kButtonPadding = 16;
inline constexpr double kPanelTitleIndent = 10;

}  // namespace host::scriptui::sizes
