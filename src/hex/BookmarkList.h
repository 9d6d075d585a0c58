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
    /// In coordinates of the screen.
    void menuWanted(const QPoint& place);

 protected:
    void updateGeometries() override;

 private:
    QHeaderView* m_heading;
};
