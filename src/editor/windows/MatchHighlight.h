#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <vector>

class ControlSearch;
class EditView;
struct TextMatch;

/// Marks all matches of a control's search text in the visible part of the text: while a window in which that text is
/// typed is open, and after a search until Escape is pressed in the text or another text is searched for. Each control
/// has one, its child. The work is limited to what fits on a screen.
class MatchHighlight : public QObject {
    Q_OBJECT

 public:
    /// Created at the first call.
    static MatchHighlight& of(EditView& view, ControlSearch& search);
    ~MatchHighlight() override;

    /// Keeps the marks on the screen while it exists.
    class Hold {
     public:
        Hold(EditView& view, ControlSearch& search);
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

     private:
        QPointer<MatchHighlight> m_highlight;
    };
    /// Called after a search: its matches stay marked.
    void keep();
    void dismiss();
    /// Updates the marks at once instead of when the event loop is idle.
    void refresh();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    MatchHighlight(EditView& view, ControlSearch& search);
    void refreshLater();
    void takeColour();
    std::vector<TextMatch> visibleMatches() const;
    void clear();
    bool wanted() const { return m_kept || m_holds > 0; }

    EditView& m_view;
    ControlSearch& m_search;
    QTimer m_later;
    int m_holds = 0;
    bool m_kept = false;
    std::vector<TextMatch> m_marked;
    quint64 m_markedAt = 0;
};
