#pragma once

#include <QObject>

#include <functional>

class QSessionManager;

/// The end of the desktop session, as the application object hears of it. Nothing is asked, and the end is never
/// prevented. Owned by main().
class SessionEnd : public QObject {
    Q_OBJECT

 public:
    /// `write` is called when the session may be about to end: what is to be kept is written, and the program runs on,
    /// because another program may still prevent the end. `end` is called when the program is to end; it returns false
    /// when that is under way already by other means. Both may be called while a modal box is shown.
    SessionEnd(std::function<void()> write, std::function<bool()> end);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    static void describeRestart(QSessionManager& manager);

    std::function<bool()> m_end;
};
