#include "widgets/BusyPointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace {

bool shown = false;

}  // namespace

namespace BusyPointer {

void show() {
    if (shown)
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    shown = true;
}

void restore() {
    if (!shown)
        return;
    QGuiApplication::restoreOverrideCursor();
    shown = false;
}

}  // namespace BusyPointer
