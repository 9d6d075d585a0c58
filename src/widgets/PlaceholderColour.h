#pragma once

#include <QObject>

class QPalette;

/// Keeps the placeholder text of an empty field readable in every theme of the desktop: many give it a colour that was
/// made for light windows, or one half as strong as the text. Owned by the application, whose palette it follows.
class PlaceholderColour : public QObject {
    Q_OBJECT

 public:
    /// Creates one for the application; it acts at once.
    static void follow();

    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    PlaceholderColour();

    static void mend();
};
