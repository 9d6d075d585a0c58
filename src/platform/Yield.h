#pragma once

#include <QCoreApplication>

/// Lets what waits in the event loop happen: one pass of it. Whoever calls this looks afterwards whether its objects
/// still live.
inline void yieldOnce() {
    QCoreApplication::processEvents();
}
