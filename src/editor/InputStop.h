#pragma once

#include <QObject>

/// While it lives, keys and mouse do nothing in the whole program, and no window closes; Escape is noted. A modal box
/// that comes up meanwhile gets its own.
class InputStop : public QObject {
    Q_OBJECT

 public:
    InputStop();
    ~InputStop() override;

    bool escaped() const { return m_escaped; }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    bool m_escaped = false;
};
