// Converts text between scripts and the toolkit.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace desktop {

// Bytes that are not UTF-8 become replacement characters.
inline QString to_qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string from_qt(const QString& text) {
    return text.toStdString();
}

// For buttons, where the toolkit treats "&" as the mark of a shortcut.
inline QString to_label(std::string_view text) {
    return to_qt(text).replace('&', "&&");
}

}  // namespace desktop
