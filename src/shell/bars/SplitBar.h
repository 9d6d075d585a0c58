#pragma once

#include <QWidget>

/// A bar between two parts of a window that is dragged to share out their room, or moved by keys: an upright bar by
/// Left and Right, a lying one by Up and Down, either by Page Up and Page Down in larger steps. It moves nothing
/// itself. Coordinates are pixels of the parent. Owned by its parent.
class SplitBar : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString Tag READ Tag)
    Q_PROPERTY(int Left READ Left)
    Q_PROPERTY(int Top READ Top)

 public:
    /// `orientation`: Vertical for an upright bar.
    SplitBar(Qt::Orientation orientation, QWidget* parent);

    /// "1" while the bar is dragged, else "0".
    QString Tag() const { return m_dragged ? u"1"_qs : u"0"_qs; }
    // Its left and its top edge in twips.
    int Left() const;
    int Top() const;

    /// The three steps of a drag, with the pointer's place on the screen. The mouse does them on the bar; its parent
    /// may do them for places beside it.
    void grip(const QPoint& place);
    void follow(const QPoint& place);
    void release(const QPoint& place);
    /// Ends a drag where it is.
    void reset();

 Q_SIGNALS:
    /// The left edge, of a lying bar the top edge, is to be there.
    void moveWanted(int edge);

 protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    bool isUpright() const { return m_orientation == Qt::Vertical; }
    int edge() const { return isUpright() ? x() : y(); }
    int across(const QPoint& place) const { return isUpright() ? place.x() : place.y(); }
    void showFocus(bool on);

    Qt::Orientation m_orientation;
    bool m_dragged = false;
    int m_grip = 0;  ///< where it is held, beyond its edge
};
