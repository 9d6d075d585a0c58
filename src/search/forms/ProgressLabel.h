#pragma once

#include <QLabel>

/// Three lines of text by which its window is dragged. A line that is too long is cut in the middle on screen; text()
/// is always whole. Its size depends on the font alone, so new texts are cheap and move nothing. Owned by its window.
class ProgressLabel : public QLabel {
    Q_OBJECT
    Q_PROPERTY(QString Tag READ Tag)

 public:
    explicit ProgressLabel(QWidget* parent);

    /// "1" while the window is dragged, else "0".
    QString Tag() const { return m_isDragging ? u"1"_qs : u"0"_qs; }
    /// The lines as they are seen.
    QStringList shownLines() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    bool m_isDragging = false;
    QPoint m_grip;  ///< where the window is held, from its upper left corner
};
