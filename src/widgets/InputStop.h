#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

/// While an object of this class exists, keys and mouse do nothing in the whole program, and no window closes; Escape
/// is noted. A modal box that is opened meanwhile gets its input, but not one that was open before.
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
