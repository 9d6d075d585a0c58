#pragma once

#include "editor/control/ControlGlobals.h"
#include "editor/control/MacroRecorder.h"
#include "keys/HotKeys.h"

#include <QObject>

class MacroStore;
class RegistryStore;

/// The keys and macros that all controls have in common: the hot keys of the macros and of the control's own commands
/// in one table, and the recording. Owned with the tables it works on, which outlive it.
class GlobalObject : public QObject, public ControlGlobals {
    Q_OBJECT

 public:
    GlobalObject(RegistryStore& registry, HotKeys& hotKeys, MacroStore& macros);

    /// The keys that the control's commands have until a person gives them others.
    static QList<HotKeys::Binding> defaultHotKeys();

    KeyAnswer press(const QKeyEvent& key) override;
    bool isAwaited(const QKeyEvent& key) const override;
    bool isBound(const QKeyEvent& key) const override;
    QString begunHotKey() const override;
    void forgetHotKey() override { m_strokes.forget(); }
    MacroRecorder& recorder() override { return m_recorder; }
    bool mayRecord(TextControl& control) override;
    void keepMacro(TextControl& control, const QList<MacroStep>& steps) override;
    QList<MacroStep> macro(int n) const override;
    QList<ControlPage*> propertyPages(TextControl& control) override;

 Q_SIGNALS:
    /// A macro was recorded, or hot keys are others now.
    void macrosChanged();

 private:
    RegistryStore& m_registry;
    HotKeys& m_hotKeys;
    MacroStore& m_macros;
    HotKeyStrokes m_strokes;
    MacroRecorder m_recorder;
};
