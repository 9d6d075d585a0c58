#pragma once

#include <QWidget>

class Prompts;
class QComboBox;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class RegistryStore;
class ShellIntegration;

/// A panel to choose the extensions whose files the desktop opens in this program: a page of the properties dialog.
/// Adding and deleting take effect, and are saved, at once. The dialog that shows it owns it; the arguments outlive it.
/// It runs the event loop while a message is open. Failed writes are not reported.
class ucFileAssociation : public QWidget {
    Q_OBJECT

 public:
    ucFileAssociation(ShellIntegration& desktop, RegistryStore& store, Prompts& prompts, QWidget* parent = nullptr);

    /// Fills the offered extensions and the list. An extension that another program has taken over is left out.
    Q_INVOKABLE void InitValues();
    /// Replaces the stored list.
    Q_INVOKABLE void SaveProp();

 private:
    QWidget* buildList();
    QWidget* buildFields();
    QPushButton* addButton(const QString& name, const QString& caption, void (ucFileAssociation::*act)());
    void fillList();
    QTreeWidgetItem* rowOf(const QString& extension) const;
    void enableDelete();
    void selectRow();
    void showDescription(const QString& text);
    void takeExtension(const QString& text);
    void takeDescription(const QString& text);
    void add();
    void deleteChosen();

    ShellIntegration& m_desktop;
    RegistryStore& m_store;
    Prompts& m_prompts;
    QTreeWidget* m_list = nullptr;
    QComboBox* m_extension = nullptr;
    QLineEdit* m_description = nullptr;
    QPushButton* m_delete = nullptr;
    bool m_filling = false;  ///< true while the program, not the user, changes selection and fields
};
