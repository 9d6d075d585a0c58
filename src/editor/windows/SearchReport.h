#pragma once

#include <QString>

class TextControl;
class QLabel;
enum class SearchOutcome;

/// What a person is told of a search, in the window in which they began it.
namespace SearchReport {

/// Empty when there is nothing to say: a match was found in the direction of the search.
QString sentence(const TextControl& control, SearchOutcome outcome, bool backwards);
/// Why nothing was replaced or counted; empty: there was nothing to find.
QString errorSentence(const TextControl& control);
/// Shows a sentence and lets a screen reader say it.
void show(QLabel& label, const QString& sentence);

}  // namespace SearchReport
