#include "widgets/PlaceholderColour.h"

#include "widgets/Contrast.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>

namespace {

/// Fainter than text, and no fainter than can be read.
QColor faintOn(const QColor& ground, const QColor& text) {
    constexpr int Faintest = 45;
    constexpr int Step = 5;
    for (int percent = Faintest; percent > 0; percent -= Step) {
        const QColor colour = Contrast::blended(text, ground, percent);
        if (Contrast::between(colour, ground) >= Contrast::Enough)
            return colour;
    }
    return text;
}

}  // namespace

PlaceholderColour::PlaceholderColour() : QObject(qApp) {
    qApp->installEventFilter(this);
}

void PlaceholderColour::follow() {
    new PlaceholderColour;
    mend();
}

bool PlaceholderColour::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp)
        mend();
    return QObject::eventFilter(watched, event);
}

/// Only this one colour is set, so that all others go on to follow the desktop.
void PlaceholderColour::mend() {
    const QPalette shown = QApplication::palette();
    QPalette own = shown;
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        own.setColor(group, QPalette::PlaceholderText,
                     faintOn(shown.color(group, QPalette::Base), shown.color(group, QPalette::Text)));
    }
    if (own.color(QPalette::PlaceholderText) != shown.color(QPalette::PlaceholderText))
        QApplication::setPalette(own);
}
