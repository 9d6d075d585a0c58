#pragma once

#include "editor/control/MacroStep.h"

#include <QList>
#include <QString>

#include <optional>

class ControlPage;
class MacroRecorder;
class QKeyEvent;
class QWidget;

/// What all controls of the process have in common, as a control sees it: the keys of its commands and the macros.
/// Whoever makes controls hands it to them, and it outlives them.
class ControlGlobals {
 public:
    struct KeyAnswer {
        enum Kind {
            NoStroke,  ///< a key that no command can be given to
            Free,      ///< a stroke that stands for nothing
            Taken      ///< spent, with the command if it ended a hot key
        };
        Kind kind = NoStroke;
        std::optional<int> command;
    };

    virtual ~ControlGlobals() = default;

    /// What a pressed key stands for.
    virtual KeyAnswer press(const QKeyEvent& key) = 0;
    /// Whether the key is the one that a hot key begun before waits for, or leaves it; press() is to get it.
    virtual bool isAwaited(const QKeyEvent& key) const = 0;
    /// Whether the key continues, ends or begins a hot key.
    virtual bool isBound(const QKeyEvent& key) const = 0;
    /// The first stroke of a hot key whose second is waited for, as text; empty: none is.
    virtual QString begunHotKey() const = 0;
    virtual void forgetHotKey() = 0;

    /// The one recording of the process.
    virtual MacroRecorder& recorder() = 0;
    /// Whether there is room for one more macro; says so when there is not.
    virtual bool mayRecord(QWidget& control) = 0;
    /// Asks which hot key the macro is to have, and keeps it then.
    virtual void keepMacro(QWidget& control, const QList<MacroStep>& steps) = 0;
    /// The steps of macro `n`, from 1; empty when there is none.
    virtual QList<MacroStep> macro(int n) const = 0;

    /// Pages for the properties dialog of a control, which owns them then.
    virtual QList<ControlPage*> propertyPages(QWidget& control) = 0;
};
