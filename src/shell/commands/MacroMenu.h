#pragma once

#include <QObject>
#include <QString>

struct EditorGlobals;
struct FrameParts;

/// The macros in their menu: one slot for each that has a hot key and that the person wants to see there, and a mark
/// while one is recorded. Owned by the frame.
class MacroMenu : public QObject {
    Q_OBJECT

 public:
    explicit MacroMenu(FrameParts& parts);

    /// From now on menu and status bar follow the recording and what comes of it.
    void follow();
    /// Brings the slots in line with hot keys and settings.
    void UpdateMacroMenu();
    /// Takes all hot keys, and so all macros, back to the defaults after a question.
    void ResetKeys();
    void SaveMacros();
    /// The macro dialog, modal; the menu follows it.
    void ShowMacros();

 private:
    /// Caption of that macro's slot; empty: it is not shown.
    QString captionOf(int macro) const;
    void showRecording();
    EditorGlobals& globals() const;

    FrameParts& m_parts;
};
