// Colours and font of the application's dark look.
#include "theme.h"

#include <QFontDatabase>
#include <algorithm>

namespace desktop::theme {

namespace {

constexpr int kFontSize = 12;

// The first that is there draws letters. What it lacks the toolkit looks for itself, but for emoji, which it would take
// from a font that has them without their colours.
QStringList families() {
    QStringList found;
    for (const char* family : {"Open Sans", "Source Sans 3", "Noto Sans", "DejaVu Sans"}) {
        if (QFontDatabase::hasFamily(family)) found.append(family);
    }
    found.insert(std::min<qsizetype>(1, found.size()), "Noto Color Emoji");
    return found + QStringList{"sans-serif"};
}

}  // namespace

QFont font() {
    QFont font;
    font.setFamilies(families());
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
