#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

class MatchScan;

/// What takes the place of a match. For an expression the text may name groups of the match, `$1` to `$99`, `${1}` or
/// `\1` to `\9`, `$0` being all of it, and hold `\n`, `\r` and `\t`; `$$` and `\\` are the signs themselves. A group
/// that took no part, or that the expression does not have, is empty.
class Replacement {
 public:
    struct Rules {
        bool regExp = false;
        bool preserveCase = false;  ///< see withCaseOf
    };
    /// `held` gives a text the form it is held in.
    Replacement(const QString& text, Rules rules, const std::function<QByteArray(const QString&)>& held);

    /// The same for every match, whatever it took.
    bool fixed() const { return m_fixed; }
    /// UTF-8 in place of the scan's present match.
    QByteArray forMatch(const MatchScan& scan) const;

 private:
    struct Piece {
        QByteArray text;
        int group = -1;  ///< -1: the text itself
    };
    bool m_preserveCase;
    bool m_fixed;
    std::vector<Piece> m_pieces;
};

/// The replacement in the case of what it replaces: all capitals for all capitals, small letters for small letters, a
/// capital and small letters for those. Anything else leaves it as it is.
QString withCaseOf(const QString& match, const QString& replacement);
