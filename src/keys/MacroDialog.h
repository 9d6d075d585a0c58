#pragma once

#include "editor/control/MacroStep.h"
#include "keys/HotKeyVerdict.h"

#include <QDialog>
#include <QPointer>

#include <optional>

class TextControl;
class HotKeys;
class MacroStore;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class StrokeEdit;

/// What comes at the end of a recording: it shows the steps and asks which hot key plays them, what the macro is
/// called, and whether it is in the menu. The macro takes the first free slot, or that of the macro whose hot key is
/// chosen anew; there what is left empty stays as it was. Cancelled, it keeps nothing. A child of the control, modal to
/// its window, and gone when closed; the tables outlive it.
class MacroDialog : public QDialog {
    Q_OBJECT

 public:
    /// `missed`: how many things were done meanwhile that no step stands for.
    MacroDialog(HotKeys& hotKeys, MacroStore& macros, const QList<MacroStep>& steps, int missed, TextControl& control);

    void accept() override;

 Q_SIGNALS:
    void kept();

 private:
    void fillSteps();
    void judge(const HotKey& hotKey);
    void tell(const HotKeyVerdict& verdict);
    HotKeyVerdict verdictOf(const HotKey& hotKey) const;
    void nameSlot(int slot, bool isReplaced);
    /// The slot whose macro has just this hot key.
    std::optional<int> slotOf(const HotKey& hotKey) const;

    HotKeys& m_hotKeys;
    MacroStore& m_macros;
    QList<MacroStep> m_steps;
    QPointer<TextControl> m_control;
    QListWidget* m_list;
    StrokeEdit* m_hotKey;
    QLineEdit* m_name;
    QCheckBox* m_display;
    QLabel* m_verdict;
    QPushButton* m_keep = nullptr;
};
