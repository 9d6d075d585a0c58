#pragma once

#include <QString>

class ControlSearch;
class QLabel;
enum class SearchOutcome;

/// The sentence that reports a search to the user, in the window in which they began it.
namespace SearchSentences {

/// Empty when no message is needed: a match was found in the direction of the search.
QString sentence(const ControlSearch& search, SearchOutcome outcome, bool backwards);
/// Why nothing was replaced or counted; empty: there was nothing to find.
QString errorSentence(const ControlSearch& search);
/// Shows a sentence and has a screen reader speak it.
void show(QLabel& label, const QString& sentence);

}  // namespace SearchSentences
