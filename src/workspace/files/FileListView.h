#pragma once

#include <QTreeView>

/// The view of the file list. Owned by the file explorer. A drag of rows runs the event loop until it ends.
class FileListView : public QTreeView {
    Q_OBJECT

 public:
    explicit FileListView(QWidget* parent = nullptr);

    /// The selected rows, from top to bottom.
    QList<int> selectedRows() const;

 Q_SIGNALS:
    /// By Enter, F2 and Del, which belong to the list while it has the focus.
    void openRequested();
    void renameRequested();
    void deleteRequested();
    /// In coordinates of the screen.
    void menuWanted(const QPoint& place);
    void dragStarted();
    void dragEnded();

 protected:
    void focusInEvent(QFocusEvent* event) override;
    void startDrag(Qt::DropActions supportedActions) override;
};
