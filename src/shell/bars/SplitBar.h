#pragma once

#include <QWidget>

/// A vertical bar between two parts of a window that is dragged to share out the width, or moved by the keys Left and
/// Right, with Page Up and Page Down in larger steps. It moves nothing itself. Coordinates are pixels of the parent.
/// Owned by its parent.
class SplitBar : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString Tag READ Tag)
    Q_PROPERTY(int Left READ Left)

 public:
    explicit SplitBar(QWidget* parent);

    /// "1" while the bar is dragged, else "0".
    QString Tag() const { return m_dragged ? u"1"_qs : u"0"_qs; }
    /// Its left edge in twips.
    int Left() const;
    /// Ends a drag.
    void reset();

 Q_SIGNALS:
    /// The left edge is to be there.
    void moveWanted(int left);

 protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

 private:
    void follow(const QMouseEvent& event);
    void showFocus(bool on);

    bool m_dragged = false;
    int m_grip = 0;  ///< where it is held, right of its left edge
};
