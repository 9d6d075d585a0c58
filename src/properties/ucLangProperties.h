#pragma once

#include <QWidget>

#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class rtCM;
struct DocumentServices;

/// A panel that lists the languages with their file patterns and a sample of each: a page of the properties dialog, and
/// the content of fmrLangProperties. The dialog that shows it owns it; the services outlive it. It runs the event loop
/// while the message boxes of its sample view are open. Saved patterns take effect at the next program start; the table
/// in memory does not change.
///
/// An index that was not read whole can't be saved, and a label gives the reason. If an index can't be written, there
/// is no message.
class ucLangProperties : public QWidget {
    Q_OBJECT

 public:
    /// Opens a page of the help, by the page's file name.
    using ShowHelp = std::function<void(const QString& page)>;

    ucLangProperties(const DocumentServices& services, ShowHelp showHelp, QWidget* parent = nullptr);

    /// Reads the index (which adds its records to the table), lists the languages and shows the first one. `pSave`:
    /// whether Save is enabled before the user changes anything.
    Q_INVOKABLE void InitObjects(bool pSave);
    /// Lists the languages again, after the index was changed elsewhere, unless changes are still to be saved.
    void refresh();
    /// Saves the changes.
    Q_INVOKABLE void SaveProp();

 Q_SIGNALS:
    /// The user edited a pattern.
    void Changed();

 private:
    QWidget* buildList();
    QWidget* buildDetails();
    QWidget* buildButtons();
    void addRow(const QString& name, const QString& patterns);
    QTreeWidgetItem* rowOf(const QString& key) const;
    void keepEditedPatterns();
    void showRow(QTreeWidgetItem* row);
    void showFault(const QString& name);
    void showIndexFault();
    bool canSave() const;
    void takeEdit(const QString& text);
    void openProperties();
    void writeIndex();

    const DocumentServices& m_services;
    ShowHelp m_showHelp;
    QTreeWidget* m_list = nullptr;
    QLineEdit* m_patterns = nullptr;
    rtCM* m_sample = nullptr;
    QLabel* m_fault = nullptr;       ///< why the language has no colours
    QLabel* m_indexFault = nullptr;  ///< why the list can't be saved
    QPushButton* m_save = nullptr;
    QString m_shown;  ///< key of the row whose patterns are in the field
    bool m_changed = false;
};
