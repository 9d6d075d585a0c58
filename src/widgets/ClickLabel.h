#pragma once

#include <QLabel>

/// A label that emits clicked() when it is clicked. With a focus policy it is a button for the keyboard and for screen
/// readers too: Space and Enter click it, and the keyboard's place is painted.
class ClickLabel : public QLabel {
    Q_OBJECT

 public:
    explicit ClickLabel(QWidget* parent = nullptr);
    explicit ClickLabel(const QString& text, QWidget* parent = nullptr);

    /// From now on it looks like a link, can be reached by the keyboard, and is a link for screen readers.
    void showAsLink();
    bool isLink() const { return m_isLink; }

 Q_SIGNALS:
    void clicked();

 protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    bool m_isLink = false;
};
