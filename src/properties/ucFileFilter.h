#pragma once

#include "properties/FilterList.h"

#include <QWidget>

class QLineEdit;
class QPushButton;
class QTreeWidget;
class QVBoxLayout;

/// The page of the properties dialog on which the user edits the file types that the open and save dialogs offer. The
/// dialog owns it; the store outlives it. Nothing is checked: a row is stored as it is typed.
class ucFileFilter : public QWidget {
    Q_OBJECT

 public:
    explicit ucFileFilter(RegistryStore& store, QWidget* parent = nullptr);

    /// Shows the stored list, or the default one.
    Q_INVOKABLE void InitValues();
    /// Saves the list if the user changed anything. What could not be written is still to be saved, without a message.
    Q_INVOKABLE void SaveProp();

 Q_SIGNALS:
    /// The user changed something.
    void Changed();

 private:
    QWidget* buildList();
    QLineEdit* addField(const QString& name, const QString& caption, QVBoxLayout& column);
    QPushButton* addButton(const QString& name, const QString& caption, void (ucFileFilter::*act)());
    void layOut();
    void showList();
    void showRow(int row);
    void selectRow();
    void takeTexts();
    void addNew();
    void removeChosen();
    void moveUp();
    void moveDown();
    void moveTo(int row);
    void reset();
    void alter();
    int chosen() const;

    RegistryStore& m_store;
    FilterList m_filters;
    QTreeWidget* m_list;
    QLineEdit* m_description = nullptr;
    QLineEdit* m_patterns = nullptr;
    QPushButton* m_new = nullptr;
    QPushButton* m_delete = nullptr;
    QPushButton* m_up = nullptr;
    QPushButton* m_down = nullptr;
    QPushButton* m_reset = nullptr;
    bool m_changed = false;
    bool m_filling = false;  ///< true while the program, not the user, changes the controls
};
