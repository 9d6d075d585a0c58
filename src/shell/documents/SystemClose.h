#pragma once

#include <QObject>

#include <functional>
#include <vector>

/// Whether the frame may be closed. While an operation runs the event loop, Close is disabled, and calls that would
/// destroy the frame wait until it has ended. Disabling nests: Close is enabled again when the outermost operation
/// ends. Owned by the frame.
class SystemClose : public QObject {
    Q_OBJECT

 public:
    explicit SystemClose(QObject* parent = nullptr);

    void enable(bool on);
    bool isGreyed() const { return m_operations > 0; }

    /// Runs the task now, or, while Close is disabled, from the event loop once it is enabled again.
    void whenFree(std::function<void()> task);

 private:
    void runWaiting();

    int m_operations = 0;
    std::vector<std::function<void()>> m_waiting;
};
