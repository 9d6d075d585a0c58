#include "shell/bars/SplitBar.h"

#include "widgets/Twips.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace {

struct StepKey {
    int key;
    int pixels;
};

constexpr StepKey StepKeys[] = {{Qt::Key_Left, -8}, {Qt::Key_Right, 8}, {Qt::Key_PageUp, -80}, {Qt::Key_PageDown, 80}};

}  // namespace

SplitBar::SplitBar(QWidget* parent) : QWidget(parent) {
    setCursor(Qt::SplitHCursor);
    setFocusPolicy(Qt::TabFocus);
    setAutoFillBackground(true);
    showFocus(false);
}

int SplitBar::Left() const {
    return x() * TwipsPerPixel;
}

void SplitBar::reset() {
    m_dragged = false;
}

void SplitBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    m_dragged = true;
    m_grip = event->position().toPoint().x();
    raise();
}

void SplitBar::mouseMoveEvent(QMouseEvent* event) {
    if (m_dragged)
        follow(*event);
}

void SplitBar::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_dragged)
        return;
    follow(*event);
    m_dragged = false;
}

void SplitBar::follow(const QMouseEvent& event) {
    Q_EMIT moveWanted(mapToParent(event.position().toPoint()).x() - m_grip);
}

void SplitBar::keyPressEvent(QKeyEvent* event) {
    for (const StepKey& each : StepKeys) {
        if (event->key() == each.key) {
            Q_EMIT moveWanted(x() + each.pixels);
            return;
        }
    }
    QWidget::keyPressEvent(event);
}

void SplitBar::focusInEvent(QFocusEvent*) {
    showFocus(true);
}

void SplitBar::focusOutEvent(QFocusEvent*) {
    showFocus(false);
}

void SplitBar::showFocus(bool on) {
    setBackgroundRole(on ? QPalette::Highlight : QPalette::Window);
}
