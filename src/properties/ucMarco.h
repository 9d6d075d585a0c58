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

/// What the panel of the macros works on; all of it outlives the panel.
struct MacroPanelServices {
    Prompts& prompts;
    Settings& settings;
    const HotKeys& hotKeys;
    MacroStore& macros;
};

/// The panel that names the macros, puts them into the menu and deletes them: a list of those that have a hot key, and
/// fields for the chosen one. What is edited is stored at once. Owned by the dialog that shows it; yields in its
/// questions.
class ucMarco : public QWidget {
    Q_OBJECT

 public:
    explicit ucMarco(const MacroPanelServices& services, QWidget* parent = nullptr);

    /// What is asked before all hot keys are reset.
    static QString ResetQuestion();

    /// Fills the list anew and chooses its first row.
    void LoadMacro();
    /// All is stored as it is edited; the menu is told once more.
    void SaveProp();

 Q_SIGNALS:
    /// A name or a place in the menu was changed.
    void Changed();
    /// The menu of the macros is to be brought up to date.
    void UpdateMacroMenu();
    /// A page of the help was asked for.
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
    bool m_filling = false;  ///< the fields follow the list, not a person
};
