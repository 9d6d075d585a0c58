#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

class MatchScan;

/// The other half of a CR LF of which a match has one. It is replaced along with the match.
struct LineEndHalves {
    bool cr = false;  ///< in front of the match, which begins with the LF
    bool lf = false;  ///< behind the match, which ends with the CR
};

/// The text that replaces a match. For a regular expression it may contain `$1` to `$99`, `${1}` or `\1` to `\9` for
/// groups of the match, `$0` for the whole match, and `\n`, `\r` and `\t`; `$$` and `\\` stand for `$` and `\`. A group
/// that did not take part in the match, or does not exist, is empty. Owned by the code that replaces; no errors.
class Replacement {
 public:
    struct Rules {
        bool regExp = false;
        bool preserveCase = false;  ///< see withCaseOf
    };
    /// `held` converts a text to the form in which the control holds it.
    Replacement(const QString& text, Rules rules, const std::function<QByteArray(const QString&)>& held);

    /// Whether the replacement is the same for every match.
    bool fixed() const { return m_fixed; }
    /// Returns the UTF-8 text that replaces the current match of the scan along with these halves. A group at an end
    /// of the match has the half beside it.
    QByteArray forMatch(const MatchScan& scan, LineEndHalves halves = {}) const;

 private:
    struct Piece {
        QByteArray text;
        int group = -1;  ///< -1: literal text
    };
    bool m_preserveCase;
    bool m_fixed;
    std::vector<Piece> m_pieces;
};

/// Returns the replacement in the letter case of the match: all upper case, all lower case, or a capital followed by
/// lower case. Any other match leaves the replacement unchanged.
QString withCaseOf(const QString& match, const QString& replacement);
