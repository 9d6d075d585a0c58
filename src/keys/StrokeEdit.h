#pragma once

#include "keys/HotKey.h"

#include <QLineEdit>

/// A field that takes a hot key by its strokes, one or two, whatever else they stand for. Backspace and Delete empty
/// it; Tab, Return and Escape do what they do in any dialog. What is typed after the second stroke begins anew.
class StrokeEdit : public QLineEdit {
    Q_OBJECT

 public:
    explicit StrokeEdit(QWidget* parent = nullptr);

    const HotKey& hotKey() const { return m_hotKey; }
    void setHotKey(const HotKey& hotKey);

 Q_SIGNALS:
    void hotKeyChanged(const HotKey& hotKey);
    /// A key was pressed that no hot key can have.
    void refused();

 protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

 private:
    HotKey m_hotKey;
};
