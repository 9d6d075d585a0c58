#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

/// While an object of this class exists, keys and mouse do nothing in the whole program, and no window closes; Escape
/// is noted. A modal box that is opened meanwhile gets its input, but not one that was open before. So does `except`, a
/// window without being modal.
class InputStop : public QObject {
    Q_OBJECT

 public:
    explicit InputStop(const QWidget* except = nullptr);
    ~InputStop() override;

    bool escaped() const { return m_escaped; }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    bool isBoxOfLater() const;
    bool isInFreeWindow(const QObject* watched) const;

    const QPointer<const QWidget> m_except;
    QPointer<QWidget> m_boxAtFirst;
    bool m_escaped = false;
};
