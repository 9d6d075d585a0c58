#pragma once

#include <QListView>

class QHeaderView;

/// The list of bookmarks: one line for each under the heading of the model. Keeps a few bytes for each line, since all
/// matches of a search may get bookmarks. Owned by the hex view.
class BookmarkList : public QListView {
    Q_OBJECT

 public:
    explicit BookmarkList(QWidget* parent = nullptr);

    void setModel(QAbstractItemModel* model) override;

 Q_SIGNALS:
    /// The right button was released, or the key for menus was pressed. Position in this widget.
    void rightReleased(const QPoint& position);

 protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void updateGeometries() override;

 private:
    QPoint fromViewport(const QPoint& point) const;

    QHeaderView* m_heading;
};
