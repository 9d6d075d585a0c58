#pragma once

#include <QIcon>
#include <QWidget>

/// One panel of the status bar: a picture, if any, and a text, cut off with "..." where it is too narrow; the whole of
/// it is the tool tip. A new text repaints this panel alone and moves nothing. The keyboard reaches it by Tab.
class StatusPanel : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)

 public:
    explicit StatusPanel(QWidget* parent = nullptr);

    QString text() const { return m_text; }
    /// Whether it is too narrow for its text.
    bool isCutOff() const;
    void setText(const QString& text);
    const QIcon& picture() const { return m_picture; }
    void setPicture(const QIcon& picture);
    /// The number of letters for which the panel should have room.
    void setRoomFor(int letters);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 Q_SIGNALS:
    /// By the mouse, or by Enter or Space.
    void doubleClicked();
    /// Escape was pressed: the keyboard is to go back to the document.
    void left();

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

 private:
    int pictureRoom() const;
    QRect textRoom() const;

    QString m_text;
    QIcon m_picture;
    int m_letters = 0;
};
