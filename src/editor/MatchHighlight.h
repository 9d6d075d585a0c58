#pragma once

#include <QObject>
#include <QTimer>

#include <vector>

class CodeMax;
struct TextMatch;

/// Marks all matches of a control's search text in the part of the text that can be seen, as long as this object lives.
/// Belongs to the window in which the text is typed. The work is bounded by what fits on a screen.
class MatchHighlight : public QObject {
    Q_OBJECT

 public:
    explicit MatchHighlight(CodeMax& control);
    ~MatchHighlight() override;

    /// Brings the marks up to date at once instead of when the event loop is idle.
    void refresh();

 private:
    std::vector<TextMatch> visibleMatches() const;
    void clear();

    CodeMax& m_control;
    QTimer m_later;
    std::vector<TextMatch> m_marked;
    quint64 m_markedAt = 0;
};
