#pragma once

#include <QObject>

class QPalette;

/// Keeps what stands in an empty field readable in whatever theme the desktop has: many give it a colour that was made
/// for light windows, or one half as strong as the text. Owned by the application, whose palette it follows.
class PlaceholderColour : public QObject {
    Q_OBJECT

 public:
    /// Gives the application one of its own; it acts at once.
    static void follow();

    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    PlaceholderColour();

    static void mend();
};
