#pragma once

#include <QString>

/// Changes the letter case of texts by the rules of Unicode. The length may change ("ß" becomes "SS").
namespace TextCase {

QString upper(const QString& text);
QString lower(const QString& text);
/// The first character in title case, the others in lower case.
QString capitalised(const QString& text);

using Change = QString (*)(const QString& text);

}  // namespace TextCase
