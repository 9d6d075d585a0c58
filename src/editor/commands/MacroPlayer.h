#pragma once

#include "editor/control/MacroStep.h"
#include "platform/YieldPace.h"

#include <QList>
#include <QPointer>

#include <memory>
#include <vector>

class TextControl;
class ControlGlobals;
class InputStop;

/// One play of a macro on a control, with the macros that it plays. It yields as soon as it takes long; from then on
/// keys and mouse have no effect except for Escape, which stops it. The control may be destroyed when play() returns.
class MacroPlayer {
 public:
    /// Both outlive this object, except a control that is destroyed while it yields.
    MacroPlayer(TextControl& control, ControlGlobals& globals);
    ~MacroPlayer();
    MacroPlayer(const MacroPlayer&) = delete;
    MacroPlayer& operator=(const MacroPlayer&) = delete;

    /// Plays macro `n`, from 1, `times` times. It ends early when a command has nothing to do, for instance a search
    /// that finds nothing, and when a macro plays itself, directly or through others.
    void play(int n, int times);

    /// For a step that takes long by itself: yields, and returns whether the step should continue.
    bool goesOn();

    bool controlLives() const { return !m_control.isNull(); }
    /// A notice for the status bar; empty: none.
    const QString& remark() const { return m_remark; }
    /// A warning that the user must see; empty: none.
    const QString& warning() const { return m_warning; }

 private:
    void playOnce(const QList<MacroStep>& steps);
    bool playStep(const MacroStep& step);
    void playText(const QString& text);
    void yield();
    QString whyNothingWasDone(const MacroStep& step) const;

    QPointer<TextControl> m_control;
    ControlGlobals& m_globals;
    std::vector<int> m_running;
    bool m_stopped = false;
    QString m_remark;
    QString m_warning;
    YieldPace m_pace;
    std::unique_ptr<InputStop> m_input;
};
