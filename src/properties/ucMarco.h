#pragma once

#include <QString>
#include <QWidget>

class HotKeys;
class MacroStore;
class Prompts;
class QCheckBox;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class QVBoxLayout;
class Settings;

/// The services that the macro panel uses; all of them outlive the panel.
struct MacroPanelServices {
    Prompts& prompts;
    Settings& settings;
    const HotKeys& hotKeys;
    MacroStore& macros;
};

/// A panel to rename and delete macros and to put them into the menu: a list of the macros that have a hot key, and
/// fields for the selected one. Changes are stored at once. The dialog that shows it owns it. It runs the event loop
/// while a question is open.
class ucMarco : public QWidget {
    Q_OBJECT

 public:
    explicit ucMarco(const MacroPanelServices& services, QWidget* parent = nullptr);

    /// The question before all hot keys are reset.
    static QString ResetQuestion();

    /// Fills the list again and selects its first row.
    void LoadMacro();
    /// Changes are already stored, so this only emits UpdateMacroMenu().
    void SaveProp();

 Q_SIGNALS:
    /// The name of a macro, or whether it is in the menu, was changed.
    void Changed();
    /// The macro menu must be updated.
    void UpdateMacroMenu();
    /// The user requested a page of the help.
    void helpWanted(const QString& page);

 private:
    QLineEdit* addField(const QString& name, const QString& caption, QVBoxLayout& column);
    QPushButton* addButton(const QString& name, const QString& caption, void (ucMarco::*act)());
    void layOut();
    void addRow(int n);
    void enableFields(bool on);
    void selectRow();
    void renameRow(const QString& name);
    void displayRow(bool display);
    void takeRow(QTreeWidgetItem* row);
    void StoreMacroRow(const QTreeWidgetItem& row);
    void deleteChosen();
    void reset();
    void help();

    MacroPanelServices m_services;
    QTreeWidget* m_list;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_key = nullptr;
    QLineEdit* m_id;
    QCheckBox* m_display;
    QPushButton* m_delete = nullptr;
    QPushButton* m_reset = nullptr;
    QPushButton* m_help = nullptr;
    bool m_filling = false;  ///< true while the program, not the user, changes the fields
};
