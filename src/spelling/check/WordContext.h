#pragma once

#include <QString>

class SpellingSession;

/// A mistake with what stands before and behind it in its line, for people to read: corrected as far as it was decided,
/// blanks instead of tabs, and cut where the line is long.
struct WordContext {
    QString before;
    QString word;
    QString behind;

    /// Of the session's mistake.
    static WordContext of(const SpellingSession& session);
};

/// The line of a position from 1; a CR LF, a CR and an LF each end one.
qint64 lineAt(QStringView text, qsizetype position);
