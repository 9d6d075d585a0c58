#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

/// The title of a band: picture, text and two buttons. It takes the keyboard: Up, Down, Page Up and Page Down move the
/// band, Enter gives it the room of the others, Delete closes its tab. Owned by the band. Mouse presses are left to the
/// area of the bands, which drags.
class BandTitle : public QWidget {
    Q_OBJECT

 public:
    /// `number` is the tab's index; the parts bear it in their object names.
    BandTitle(int number, const QIcon& picture, QWidget* parent);

    QString text() const;
    void setText(const QString& text, const QString& toolTip);

 Q_SIGNALS:
    /// By this many small steps, downwards if positive.
    void moveWanted(int steps);
    void enlargeWanted();
    void closeWanted();

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    QToolButton& addButton(const char* name, const char* icon, int number);

    QLabel& m_picture;
    QLabel& m_text;
    QToolButton& m_up;
    QToolButton& m_center;
};
