#pragma once

#include "editor/control/MacroStep.h"

#include <QList>
#include <QObject>
#include <QPointer>

class EditView;

/// The steps of a macro while it is recorded. It follows the one control that it was begun in, and ends without a
/// macro when that is destroyed.
class MacroRecorder : public QObject {
    Q_OBJECT

 public:
    using QObject::QObject;

    bool isRecording() const { return m_recording; }
    bool follows(const EditView& view) const;

    void begin(EditView& view);
    /// Ends the recording and returns its steps.
    QList<MacroStep> finish();

    const QList<MacroStep>& steps() const { return m_steps; }
    /// Typed text is added to the step of the text that was typed just before, unless `mayGoOn` is false.
    void add(const MacroStep& step, bool mayGoOn = true);
    /// Adds a command that sets something for later ones, unless the steps have it set so already.
    void addSetting(const MacroStep& step);
    /// Removes the last steps, which turned out not to be steps, until `count` are left.
    void cutTo(qsizetype count);

    /// Something happened in the control that no step can express: the mouse, a command of the program, an undo.
    void missed();
    int missedCount() const { return m_missed; }

 Q_SIGNALS:
    /// Begun, ended, or one step further.
    void changed();

 private:
    void end();
    bool typingGoesOn() const;

    bool m_recording = false;
    QPointer<EditView> m_view;
    QMetaObject::Connection m_death;
    QList<MacroStep> m_steps;
    bool m_open = false;  ///< typed text may go on with the last step
    int m_missed = 0;
};
