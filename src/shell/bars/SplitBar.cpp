#include "shell/bars/SplitBar.h"

#include "widgets/FocusFrame.h"
#include "widgets/PlainKey.h"
#include "widgets/Twips.h"

#include <QMouseEvent>

namespace {

struct StepKey {
    Qt::Orientation orientation;
    int key;
    int pixels;
};

constexpr StepKey StepKeys[] = {
    {Qt::Vertical, Qt::Key_Left, -8},      {Qt::Vertical, Qt::Key_Right, 8},       {Qt::Vertical, Qt::Key_PageUp, -80},
    {Qt::Vertical, Qt::Key_PageDown, 80},  {Qt::Horizontal, Qt::Key_Up, -8},       {Qt::Horizontal, Qt::Key_Down, 8},
    {Qt::Horizontal, Qt::Key_PageUp, -80}, {Qt::Horizontal, Qt::Key_PageDown, 80},
};

}  // namespace

SplitBar::SplitBar(Qt::Orientation orientation, QWidget* parent) : QWidget(parent), m_orientation(orientation) {
    setCursor(isUpright() ? Qt::SplitHCursor : Qt::ArrowCursor);
    setFocusPolicy(Qt::TabFocus);
    setAutoFillBackground(true);
    showFocus(false);
}

int SplitBar::Left() const {
    return x() * TwipsPerPixel;
}

int SplitBar::Top() const {
    return y() * TwipsPerPixel;
}

void SplitBar::grip(const QPoint& place) {
    m_dragged = true;
    m_grip = across(mapFromGlobal(place));
    raise();
}

void SplitBar::follow(const QPoint& place) {
    if (m_dragged)
        Q_EMIT moveWanted(edge() + across(mapFromGlobal(place)) - m_grip);
}

void SplitBar::release(const QPoint& place) {
    follow(place);
    reset();
}

void SplitBar::reset() {
    m_dragged = false;
}

void SplitBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        grip(event->globalPosition().toPoint());
}

void SplitBar::mouseMoveEvent(QMouseEvent* event) {
    follow(event->globalPosition().toPoint());
}

void SplitBar::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        release(event->globalPosition().toPoint());
}

void SplitBar::keyPressEvent(QKeyEvent* event) {
    for (const StepKey& each : StepKeys) {
        if (isPlainKey(*event) && each.orientation == m_orientation && event->key() == each.key) {
            Q_EMIT moveWanted(edge() + each.pixels);
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

/// A lying bar, which has content, shows it by a frame, which an upright one is too thin for.
void SplitBar::showFocus(bool on) {
    setBackgroundRole(on && isUpright() ? QPalette::Highlight : QPalette::Window);
    update();
}

void SplitBar::paintEvent(QPaintEvent*) {
    if (!isUpright())
        FocusFrame::paint(*this);
}
