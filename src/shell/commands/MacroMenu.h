#pragma once

#include <QObject>
#include <QString>

class CommandEntries;
class HelpPages;
class MenuSlots;
class Prompts;
class QWidget;
class Settings;
struct EditorGlobals;

/// The macros in their menu: one slot for each that has a hot key and that the user has put there, and a mark while one
/// is recorded. Owned by the frame. The dialog and the question run the event loop.
class MacroMenu : public QObject {
    Q_OBJECT

 public:
    /// `window` is the parent of boxes.
    MacroMenu(QWidget& window, Prompts& prompts, Settings& settings, EditorGlobals& globals, const HelpPages& help,
              CommandEntries& commands, const MenuSlots& menuSlots);

    /// Updates the slots from hot keys and settings.
    void UpdateMacroMenu();
    /// Sets all hot keys, and so all macros, back to the defaults after a question.
    void ResetKeys();
    void SaveMacros();
    /// The macro dialog, modal; the menu follows it.
    void ShowMacros();

 Q_SIGNALS:
    /// How far the recording of a macro is, as the status bar shows it; empty: none is recorded.
    void recordingChanged(const QString& text);

 private:
    /// Caption of that macro's slot; empty: it is not shown.
    QString captionOf(int macro) const;
    void showRecording();

    QWidget& m_window;
    Prompts& m_prompts;
    Settings& m_settings;
    EditorGlobals& m_globals;
    const HelpPages& m_help;
    CommandEntries& m_commands;
    const MenuSlots& m_menuSlots;
};
