#pragma once

#include "keys/HotKey.h"

#include <QLineEdit>

/// An input field for a hot key of one or two strokes; it receives the keys even if they are shortcuts. Backspace and
/// Delete clear it; Tab, Return and Escape work as in any dialog. After two strokes, the next one begins a new hot key.
class StrokeEdit : public QLineEdit {
    Q_OBJECT

 public:
    explicit StrokeEdit(QWidget* parent = nullptr);

    const HotKey& hotKey() const { return m_hotKey; }
    void setHotKey(const HotKey& hotKey);

 Q_SIGNALS:
    void hotKeyChanged(const HotKey& hotKey);
    /// The pressed key can't be part of a hot key.
    void refused();

 protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

 private:
    HotKey m_hotKey;
};
