#include "shell/documents/SystemClose.h"

#include <utility>

SystemClose::SystemClose(QObject* parent) : QObject(parent) {}

void SystemClose::enable(bool on) {
    if (!on) {
        ++m_operations;
        return;
    }
    if (m_operations > 0)
        --m_operations;
    if (m_operations == 0 && !m_waiting.empty())
        QMetaObject::invokeMethod(this, &SystemClose::runWaiting, Qt::QueuedConnection);
}

void SystemClose::whenFree(std::function<void()> task) {
    if (!isGreyed()) {
        task();
        return;
    }
    m_waiting.push_back(std::move(task));
}

void SystemClose::runWaiting() {
    while (!isGreyed() && !m_waiting.empty()) {
        const std::function<void()> task = std::move(m_waiting.front());
        m_waiting.erase(m_waiting.begin());
        task();
    }
}
