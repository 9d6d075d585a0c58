#pragma once

#include "editor/windows/ControlPage.h"
#include "keys/HotKeyVerdict.h"
#include "keys/HotKeys.h"

#include <QPointer>

class MacroStore;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class RegistryStore;
class StrokeEdit;

/// The page of the properties dialog on which the user changes the hot keys of the control's commands. The dialog owns
/// it. It edits a copy of the table; apply() (the OK button) replaces the shared table by the copy and saves it.
/// `registry`, `hotKeys` and `macros` outlive it.
class KeysPage : public ControlPage {
    Q_OBJECT

 public:
    KeysPage(RegistryStore& registry, HotKeys& hotKeys, const MacroStore& macros, QWidget& control);

    QString caption() const override { return tr("&Keys"); }
    void apply() override;

 Q_SIGNALS:
    void applied();

 private:
    void layOut();
    QPushButton* addButton(const QString& name, const QString& caption, void (KeysPage::*act)());
    void fill();
    void showKeys();
    void filter(const QString& words);
    void select();
    void judge(const HotKey& hotKey);
    void tell(const HotKeyVerdict& verdict);
    void add();
    void remove();
    void reset();
    void resetAll();
    void changed();
    int chosen() const;
    HotKeyVerdict verdictOf(const HotKey& hotKey) const;
    /// Names the macros that the edited table has left without a hot key; empty if there are none.
    QString lossSentence() const;

    RegistryStore& m_registry;
    HotKeys& m_hotKeys;
    HotKeys m_edited;
    const MacroStore& m_macros;
    QPointer<QWidget> m_control;
    QLineEdit* m_filter;
    QTreeWidget* m_list;
    QComboBox* m_present;
    StrokeEdit* m_new;
    QLabel* m_verdict;
    QPushButton* m_add = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_reset = nullptr;
    QPushButton* m_resetAll = nullptr;
};
