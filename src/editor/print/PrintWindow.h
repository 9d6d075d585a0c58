#pragma once

#include "editor/print/PrintJob.h"
#include "platform/YieldPace.h"

#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;

/// Shows how far a print has come, and cancels it. Modal, so that the text stays as it is. Owned by the code that
/// prints. It appears only when the print takes a while, and does not yield before.
class PrintWindow : public QDialog {
    Q_OBJECT

 public:
    /// Long enough that a print of some pages does not flash.
    static constexpr qint64 DelayMilliseconds = 300;

    explicit PrintWindow(const QString& name, QWidget* parent, qint64 delayMilliseconds = DelayMilliseconds);

    /// False: the print was cancelled. Yields every 20 ms, so that this window may be destroyed when it returns.
    bool report(const PrintProgress& progress);

    /// By any of the ways to close it the print is cancelled and the window is hidden at once.
    void done(int result) override;

 private:
    QLabel* m_status;
    QProgressBar* m_bar;
    QElapsedTimer m_since;
    YieldPace m_pace;
    qint64 m_delay;
    bool m_cancelled = false;
};
