#include "shell/start/SessionEnd.h"

#include <QEvent>
#include <QGuiApplication>
#include <QSessionManager>

#include <utility>

SessionEnd::SessionEnd(std::function<void()> write, std::function<bool()> end) : m_end(std::move(end)) {
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this, [write = std::move(write)] { write(); },
        Qt::DirectConnection);
    connect(qGuiApp, &QGuiApplication::saveStateRequest, this, &SessionEnd::describeRestart, Qt::DirectConnection);
    qGuiApp->installEventFilter(this);
}

/// The desktop starts a running program again in its next session, without arguments: the program brings back by itself
/// what was open.
void SessionEnd::describeRestart(QSessionManager& manager) {
    manager.setRestartHint(QSessionManager::RestartIfRunning);
    manager.setRestartCommand({QCoreApplication::applicationFilePath()});
    manager.setDiscardCommand({});
}

/// Left to itself, the event closes all windows, which ask about changes.
bool SessionEnd::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qGuiApp && event->type() == QEvent::Quit && m_end())
        return true;
    return QObject::eventFilter(watched, event);
}
