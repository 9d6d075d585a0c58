#pragma once

#include <QElapsedTimer>

/// Says when a loop over many small steps has kept the event loop waiting long enough: 20 ms after the last yield.
class YieldPace {
 public:
    YieldPace() { m_since.start(); }

    /// True: the caller yields now.
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
