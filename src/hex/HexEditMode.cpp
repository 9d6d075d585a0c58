#include "hex/HexEditMode.h"

#include "widgets/Contrast.h"
#include "widgets/StoredColour.h"

#include <QPalette>
#include <QWidget>

namespace {

constexpr qint32 ModeInUse = 255;
constexpr qint32 OtherMode = 16384;

/// The two colours are fixed, so on a dark window they are shown on a light background.
void paintLabel(QWidget* label, qint32 number) {
    const QColor window = label->parentWidget()->palette().color(QPalette::Window);
    const bool isTooDark = Contrast::between(StoredColour::colourOf(OtherMode), window) < Contrast::Enough;
    QPalette palette;
    palette.setColor(QPalette::WindowText, StoredColour::colourOf(number));
    if (isTooDark)
        palette.setColor(QPalette::Window, Qt::white);
    label->setAutoFillBackground(isTooDark);
    label->setPalette(palette);
}

}  // namespace

HexEditMode::HexEditMode(QWidget* hexLabel, QWidget* textLabel) : m_hexLabel(hexLabel), m_textLabel(textLabel) {
    paint();
}

void HexEditMode::toggle() {
    m_hexMode = !m_hexMode;
    paint();
}

void HexEditMode::paint() const {
    paintLabel(m_hexLabel, m_hexMode ? ModeInUse : OtherMode);
    paintLabel(m_textLabel, m_hexMode ? OtherMode : ModeInUse);
}
