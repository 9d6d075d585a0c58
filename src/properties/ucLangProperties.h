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

/// The languages with their file patterns and a sample of each: a page of the properties dialog, and alone in
/// fmrLangProperties. Owned by whoever shows it; it yields to the boxes of its sample view. What is written counts from
/// the next start on: the table in memory stays as it is.
///
/// Failures to write the index pass without a word.
class ucLangProperties : public QWidget {
    Q_OBJECT

 public:
    /// What opens a page of the help, by the page's file name.
    using ShowHelp = std::function<void(const QString& page)>;

    ucLangProperties(const DocumentServices& services, ShowHelp showHelp, QWidget* parent = nullptr);

    /// Reads the index, which adds its records to the table, lists the languages and shows the first. `pSave`: whether
    /// the list can be saved before anything was changed.
    Q_INVOKABLE void InitObjects(bool pSave);
    /// Saves what was changed.
    Q_INVOKABLE void SaveProp();

 Q_SIGNALS:
    /// A pattern was edited.
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
    void takeEdit(const QString& text);
    void openProperties();
    void writeIndex();

    const DocumentServices& m_services;
    ShowHelp m_showHelp;
    QTreeWidget* m_list = nullptr;
    QLineEdit* m_patterns = nullptr;
    rtCM* m_sample = nullptr;
    QLabel* m_fault = nullptr;  ///< why the language has no colours
    QPushButton* m_save = nullptr;
    QString m_shown;  ///< key of the row whose patterns are in the box
    bool m_changed = false;
};
