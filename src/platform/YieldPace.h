#pragma once

#include <QElapsedTimer>

/// Decides when a loop over many small steps should run the event loop (yield): 20 ms after the last time. A plain
/// value, owned by the loop; it does not yield itself.
class YieldPace {
 public:
    YieldPace() { m_since.start(); }

    /// True: the caller should yield now.
    bool due() {
        if (m_since.elapsed() < Milliseconds)
            return false;
        m_since.start();
        return true;
    }

 private:
    static constexpr qint64 Milliseconds = 20;

    QElapsedTimer m_since;
};
