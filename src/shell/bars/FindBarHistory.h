#pragma once

#include <QStringList>

/// The texts that were searched for, the newest first, at most 30. A text is compared exactly and kept unchanged.
namespace FindBarHistory {

constexpr int Most = 30;

enum class Change {
    Nothing,
    Added,
    Raised,  ///< it was in the list and was moved to the top
};

/// Adds a text at the top of the list. One that is in the list already is moved only if requested; a blank one is
/// ignored.
Change AddSearchKey(QStringList& keys, const QString& pText, bool pMoveToTop);

/// Adds the lines of a file, which has the oldest first.
void addLines(QStringList& keys, const QStringList& lines);
QStringList toLines(const QStringList& keys);

}  // namespace FindBarHistory
