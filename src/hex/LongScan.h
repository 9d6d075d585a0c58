#pragma once

#include "hex/PacedProgress.h"
#include "platform/YieldPace.h"

#include <QElapsedTimer>
#include <QString>

#include <functional>
#include <memory>

class InputStop;

/// What a user sees of one scan over a file, or of a fill, and how it is stopped: nothing for a moment, then a progress
/// bar, a text in the status bar, and Esc. Lives as long as the scan, on the stack.
///
/// Runs the event loop (yields) once the scan takes long; keys and mouse have no effect meanwhile, but a timer may
/// destroy the bar with its view: goesOn() then returns false.
class LongScan {
 public:
    using Notice = std::function<void(const QString& text)>;

    /// `notice` is called while the bar exists: with `text` for the status bar, at the end with an empty one.
    LongScan(QProgressBar* bar, Notice notice, QString text);
    ~LongScan();
    Q_DISABLE_COPY_MOVE(LongScan)

    /// To be called often, with how far the scan is, in percent. False: it has to end.
    bool goesOn(int percent);
    bool wasStopped() const { return m_wasStopped; }

 private:
    void show();

    PacedProgress m_bar;
    Notice m_notice;
    QString m_text;
    QElapsedTimer m_since;
    YieldPace m_pace;
    std::unique_ptr<InputStop> m_input;  ///< once the scan takes long
    bool m_wasStopped = false;
};
