#pragma once

#include "text/held/HeldText.h"
#include "text/search/MatchScan.h"
#include "text/search/Replacement.h"

#include <QByteArray>

#include <optional>
#include <vector>

/// Matches and their replacements, in the order of the text. A match has the halves of a CR LF with it that its
/// replacement takes the place of.
struct Replacements {
    struct Edit {
        TextMatch match;
        qsizetype textFrom = 0;  ///< into the texts
        qsizetype textLength = 0;
    };
    std::vector<Edit> edits;
    QByteArray texts;
};

/// Collects the matches of a scan and their replacements. A match that begins with the LF behind another one keeps it.
/// Owned by the code that searches; all three arguments outlive it. The text must not change meanwhile.
class ReplacementCollector {
 public:
    ReplacementCollector(Replacements& found, const Replacement& replacement, const HeldText& held)
        : m_found(found), m_replacement(replacement), m_held(held) {}

    /// Adds the scan's present match.
    void add(const MatchScan& scan);

 private:
    Replacements::Edit editFor(const MatchScan& scan, LineEndHalves halves);

    Replacements& m_found;
    const Replacement& m_replacement;
    const HeldText& m_held;
    QByteArray m_text;                              ///< of the last replacement
    std::optional<Replacements::Edit> m_withoutLf;  ///< the last edit, as it is when the next match has the LF
};
