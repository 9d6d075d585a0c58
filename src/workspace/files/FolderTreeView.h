#pragma once

#include <QTreeView>

/// The view of the folder tree. Owned by the file explorer. It notices which mouse button was pressed last, because a
/// right press selects a folder without showing its files. Its only column is as wide as the names need, at least as
/// wide as the view.
class FolderTreeView : public QTreeView {
    Q_OBJECT

 public:
    explicit FolderTreeView(QWidget* parent = nullptr);

    /// Shows the name of the node, also where it lies beyond the left or right edge.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

 Q_SIGNALS:
    /// The current node was chosen by key or left button, whether it was another one before or not.
    void nodeClicked(const QModelIndex& index);
    /// In coordinates of the screen.
    void menuWanted(const QPoint& place);

 protected:
    int sizeHintForColumn(int column) const override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
    void fitColumn();

    bool m_isRightPress = false;
    bool m_isFocusArriving = false;
    bool m_isClickReported = false;  ///< during a press: the press has changed the current node
};
