#pragma once

#include "editor/control/ControlGlobals.h"
#include "editor/control/MacroRecorder.h"
#include "keys/HotKeys.h"

#include <QObject>

class EditView;
class MacroStore;
class Prompts;
class RegistryStore;

/// The hot keys and macros that all text controls share: one table with the hot keys of macros and of the control's own
/// commands, and the macro recorder. The shell owns the single object, together with the tables it uses, which outlive
/// it.
class GlobalObject : public QObject, public ControlGlobals {
    Q_OBJECT

 public:
    GlobalObject(Prompts& prompts, RegistryStore& registry, HotKeys& hotKeys, MacroStore& macros);

    /// The hot keys of the control's commands until the user changes them.
    static QList<HotKeys::Binding> defaultHotKeys();

    KeyAnswer press(const QKeyEvent& key) override;
    bool isAwaited(const QKeyEvent& key) const override;
    bool isBound(const QKeyEvent& key) const override;
    QString begunHotKey() const override;
    void forgetHotKey() override { m_strokes.forget(); }
    MacroRecorder& recorder() override { return m_recorder; }
    bool mayRecord(QWidget& control) override;
    void keepMacro(QWidget& control, const QList<MacroStep>& steps) override;
    QList<MacroStep> macro(int n) const override;
    QList<ControlPage*> propertyPages(QWidget& control) override;
    /// Ends the recording of a control that is to be closed, and returns when the user has decided what becomes of the
    /// steps. Runs the event loop; the control may be destroyed then.
    void finishRecording(EditView& control);

 Q_SIGNALS:
    /// A macro was recorded, or hot keys were changed.
    void macrosChanged();

 private:
    Prompts& m_prompts;
    RegistryStore& m_registry;
    HotKeys& m_hotKeys;
    MacroStore& m_macros;
    HotKeyStrokes m_strokes;
    MacroRecorder m_recorder;
};
