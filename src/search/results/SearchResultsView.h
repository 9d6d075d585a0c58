#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QTreeView>

class MatchDelegate;
class SearchResultsModel;

/// The view of the search results. Enter and a double-click choose a match; Enter on a file opens and closes its node,
/// and typing selects the next file of that name. Its only column is as wide as the widest row that was shown, at least
/// as wide as the view. Owned by the panel.
class SearchResultsView : public QTreeView {
    Q_OBJECT

 public:
    /// The panel owns both.
    SearchResultsView(SearchResultsModel& model, QWidget* parent);

    void closeAllFiles();
    /// Does not scroll sideways.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void doItemsLayout() override;
    void reset() override;
    void keyboardSearch(const QString& typed) override;

 Q_SIGNALS:
    /// Enter or a double-click. Its slots run the event loop, and the view may be destroyed meanwhile.
    void matchChosen(const QModelIndex& match);
    /// The right button was released over the view, or the menu key pressed; in coordinates of the screen.
    void menuWanted(const QPoint& place);

 protected:
    void rowsInserted(const QModelIndex& parent, int start, int end) override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) override;
    int sizeHintForColumn(int column) const override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
    void fitColumn();
    void leaveClosedFile();
    bool isOnCheckBox(QPoint place) const;
    void takeEnter();

    SearchResultsModel& m_model;
    MatchDelegate& m_delegate;
    QTimer m_nextLayout;  ///< in a large tree: when rows that were added are laid out
    mutable int m_widestRow = 0;
    QString m_typed;
    QElapsedTimer m_sinceTyped;
};
