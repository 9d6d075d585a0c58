#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QProgressBar>

/// Shows how far some work is, and paints the bar ten times a second at most: Qt would paint it for each percent, with
/// several threads, and waiting for them is a noticeable part of the time in which a large file is copied. The value of
/// the bar is always current. A plain value, made when the work begins; the bar may be destroyed meanwhile.
class PacedProgress {
 public:
    explicit PacedProgress(QProgressBar* bar) : m_bar(bar) { m_sincePainted.start(); }

    bool isThere() const { return !m_bar.isNull(); }
    void show() {
        setValue(0);
        m_bar->setUpdatesEnabled(true);
        m_bar->show();
    }
    void hide() {
        finish();
        m_bar->hide();
    }
    void setValue(int percent) {
        const bool isDue = m_sincePainted.elapsed() >= Milliseconds;
        if (isDue)
            m_sincePainted.start();
        m_bar->setUpdatesEnabled(isDue);
        m_bar->setValue(percent);
    }
    /// The work has ended; the bar is painted as usual, unless it is hidden.
    void finish() { m_bar->setUpdatesEnabled(true); }

 private:
    static constexpr qint64 Milliseconds = 100;

    QPointer<QProgressBar> m_bar;
    QElapsedTimer m_sincePainted;
};
