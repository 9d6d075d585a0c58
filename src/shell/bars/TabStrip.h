#pragma once

#include <QTabBar>

/// The row of document tabs. It can be used by keyboard, and requests its menu at the release of the right button or on
/// the menu key.
class TabStrip : public QTabBar {
    Q_OBJECT

 public:
    explicit TabStrip(QWidget* parent = nullptr);

 Q_SIGNALS:
    void menuWanted(const QPoint& globalPosition);

 protected:
    /// The right button selects the tab below it too, so that the menu is for that tab.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
};
