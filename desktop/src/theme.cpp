// Colours and font of the application's dark look.
#include "theme.h"

namespace desktop::theme {

namespace {

constexpr int kFontSize = 12;

}  // namespace

QFont font() {
    QFont font;
    font.setFamilies({"Open Sans", "Source Sans 3", "Noto Sans", "DejaVu Sans", "sans-serif"});
    font.setPixelSize(kFontSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QPalette palette() {
    QPalette palette;
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Button, QPalette::ToolTipBase}) {
        palette.setColor(role, kWindow);
    }
    palette.setColor(QPalette::Base, kField);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, kText);
        palette.setColor(QPalette::Disabled, role, kDisabledText);
    }
    palette.setColor(QPalette::PlaceholderText, kDisabledText);
    palette.setColor(QPalette::Highlight, kAccent);
    palette.setColor(QPalette::HighlightedText, kOnAccent);
    return palette;
}

}  // namespace desktop::theme
