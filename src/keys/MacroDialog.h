#pragma once

#include "editor/control/MacroStep.h"
#include "keys/HotKeyVerdict.h"

#include <QDialog>
#include <QPointer>

#include <optional>

class HotKeys;
class MacroStore;
class Prompts;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class StrokeEdit;

/// The dialog at the end of a recording: it lists the steps and lets the user choose the hot key and the name of the
/// macro, and whether it is in the menu. The macro is stored in a free slot and saved at once; if the user chooses the
/// hot key of an existing macro, it replaces that one, and fields left empty keep their old values. If the user
/// cancels, nothing is stored, after a question.
///
/// A child of the control, modal to its window; deletes itself when closed. The services outlive it. It runs the event
/// loop while a box is open.
class MacroDialog : public QDialog {
    Q_OBJECT

 public:
    /// `missed`: the number of actions during the recording that could not be recorded as steps.
    MacroDialog(Prompts& prompts, HotKeys& hotKeys, MacroStore& macros, const QList<MacroStep>& steps, int missed,
                QWidget& control);

    void accept() override;
    void reject() override;

 Q_SIGNALS:
    void kept();

 private:
    void fillSteps();
    void judge(const HotKey& hotKey);
    void tell(const HotKeyVerdict& verdict);
    HotKeyVerdict verdictOf(const HotKey& hotKey) const;
    void nameSlot(int slot, bool isReplaced);
    void saveSlot(int slot);
    /// Returns the slot (from 1) of the macro with exactly this hot key.
    std::optional<int> slotOf(const HotKey& hotKey) const;

    Prompts& m_prompts;
    HotKeys& m_hotKeys;
    MacroStore& m_macros;
    QList<MacroStep> m_steps;
    QPointer<QWidget> m_control;
    QListWidget* m_list;
    StrokeEdit* m_hotKey;
    QLineEdit* m_name;
    QCheckBox* m_display;
    QLabel* m_verdict;
    QPushButton* m_keep = nullptr;
};
