#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

/// While it lives, keys and mouse do nothing in the whole program, and no window closes; Escape is noted. A modal box
/// that comes up meanwhile gets its own, but not one that was there before.
class InputStop : public QObject {
    Q_OBJECT

 public:
    InputStop();
    ~InputStop() override;

    bool escaped() const { return m_escaped; }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    bool isBoxOfLater() const;

    QPointer<QWidget> m_boxAtFirst;
    bool m_escaped = false;
};
