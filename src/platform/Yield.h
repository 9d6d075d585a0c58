#pragma once

#include <QCoreApplication>
#include <QEventLoop>

/// Lets what waits in the event loop happen: one pass of it. Whoever calls this looks afterwards whether its objects
/// still live.
inline void yieldOnce() {
    QCoreApplication::processEvents();
}

/// The same, but keys and clicks wait.
inline void yieldWithoutInput() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
