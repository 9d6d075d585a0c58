#pragma once

#include "editor/control/MacroStep.h"

#include <QList>
#include <QString>

#include <optional>

class ControlPage;
class MacroRecorder;
class QKeyEvent;
class QWidget;

/// What all controls of the process have in common, as a control sees it: the keys of its commands and the macros. It
/// is passed to each control by the code that creates it, and outlives them.
class ControlGlobals {
 public:
    struct KeyAnswer {
        enum Kind {
            NoStroke,  ///< a key to which no command can be assigned
            Free,      ///< a stroke without a command
            Taken      ///< used up; with the command if it completed a hot key
        };
        Kind kind = NoStroke;
        std::optional<int> command;
    };

    virtual ~ControlGlobals() = default;

    /// Handles a pressed key.
    virtual KeyAnswer press(const QKeyEvent& key) = 0;
    /// Whether the key completes or cancels a hot key whose first stroke was pressed; it must be passed to press().
    virtual bool isAwaited(const QKeyEvent& key) const = 0;
    /// Whether the key continues, ends or begins a hot key.
    virtual bool isBound(const QKeyEvent& key) const = 0;
    /// The first stroke, as text, of a hot key that waits for its second one; empty: none does.
    virtual QString begunHotKey() const = 0;
    virtual void forgetHotKey() = 0;

    /// The one recording of the process.
    virtual MacroRecorder& recorder() = 0;
    /// Whether there is room for one more macro; shows a message if not.
    virtual bool mayRecord(QWidget& control) = 0;
    /// Asks for the hot key of the macro, and stores the macro then. Does not wait for the answer.
    virtual void keepMacro(QWidget& control, const QList<MacroStep>& steps) = 0;
    /// The steps of macro `n`, from 1; empty when there is none.
    virtual QList<MacroStep> macro(int n) const = 0;

    /// Pages for the properties dialog of a control, which then owns them.
    virtual QList<ControlPage*> propertyPages(QWidget& control) = 0;
};
