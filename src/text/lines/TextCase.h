#pragma once

#include <QString>

/// Letter case of texts by the rules of Unicode; the length may change with it ("ß" becomes "SS").
namespace TextCase {

QString upper(const QString& text);
QString lower(const QString& text);
/// The first character as a capital, the others in lower case.
QString capitalised(const QString& text);

using Change = QString (*)(const QString& text);

}  // namespace TextCase
