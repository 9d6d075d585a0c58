#pragma once

#include <QString>

#include <algorithm>

/// Whether a path can stand in a line of one of the program's own lists: it is not empty, and contains none of the
/// characters that separate lines and fields.
inline bool canBeWritten(const QString& path) {
    return !path.isEmpty() &&
           std::ranges::none_of(path, [](QChar each) { return QStringView(u"\t\r\n").contains(each); });
}
