#pragma once

#include "text/held/HeldText.h"
#include "text/search/Replacements.h"

#include <QByteArray>

#include <vector>

class QsciScintillaBase;

/// Carries out many replacements in few edits: matches near each other are replaced along with the short text between
/// them, where no mark of a line would be lost. The control's undo group is the caller's.
class BulkReplace {
 public:
    /// All three outlive this object; the text is the view's.
    BulkReplace(QsciScintillaBase& view, const HeldText& text, const Replacements& wanted);

    /// From the last to the first, so that no edit moves a match that is not replaced yet.
    void apply();

 private:
    struct Run {
        std::size_t first = 0;
        std::size_t end = 0;
    };
    void findMarkedLines();
    Run runThatEnds(std::size_t end) const;
    bool textHoldsCr() const;
    bool maySplitLineEnd(const Replacements::Edit& edit) const;
    qint64 lastMarkUpTo(qint64 place) const;
    void followMark(const TextMatch& range);
    void putIn(const Run& run);
    void replace(const TextMatch& range, const char* text, qsizetype length);

    QsciScintillaBase& m_view;
    const HeldText& m_text;
    const Replacements& m_wanted;
    std::vector<qint64> m_markedLines;  ///< where they begin, before the edits made so far
    bool m_holdsCr = false;             ///< the text between the matches, or the replacements
    QByteArray m_run;
};
