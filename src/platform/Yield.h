#pragma once

#include <QCoreApplication>
#include <QEventLoop>

/// Yields: processes the pending events once. Any object may be destroyed meanwhile, so the caller must check
/// afterwards whether its own objects still exist.
inline void yieldOnce() {
    QCoreApplication::processEvents();
}

/// Yields too, but leaves key and mouse events in the queue.
inline void yieldWithoutInput() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
