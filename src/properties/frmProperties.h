#pragma once

#include <QDialog>

#include <functional>

class QBoxLayout;
class QPushButton;
class QTabWidget;
class ucFileAssociation;
class ucFileFilter;
class ucFont;
class ucLangProperties;
class ucMarco;
class ucPropFindReplace;
class ucPropGeneral;
struct PropertiesServices;

/// The dialog of all settings of the program: a tab strip, a page for each kind of settings, and the buttons that save
/// them. Created once by its owner and kept; Cancel hides it and leaves the pages as they are. Some pages run the event
/// loop while a question of theirs is open.
class frmProperties : public QDialog {
    Q_OBJECT

 public:
    explicit frmProperties(const PropertiesServices& services, QWidget* parent = nullptr);

    /// Has the pages load their values, once: later calls do nothing.
    Q_INVOKABLE void InitValues();
    /// Has the pages save what was changed. File associations are saved by their page itself.
    Q_INVOKABLE void SaveProperties();

    /// These show what is stored again, after it was changed elsewhere. Languages with changes that are not saved yet
    /// stay as they are; changes to macros are always saved.
    void refreshLanguages();
    void refreshMacros();

 Q_SIGNALS:
    /// The menu of the macros must be updated.
    void UpdateMacroMenu();

 protected:
    void showEvent(QShowEvent* event) override;

 private:
    void addPages();
    void addPage(const char* key, const QString& caption, QWidget* page);
    QPushButton* addButton(QBoxLayout& row, const QString& name, const QString& caption, void (frmProperties::*act)());
    QBoxLayout* buildButtons();
    void addKeys();
    void connectPages();
    void enableApply();
    void apply();
    void confirm();
    void help();
    void turnPage(int step);

    std::function<void(const QString& page)> m_showHelp;
    QTabWidget* m_pages;
    ucPropGeneral* m_general;
    ucFileFilter* m_filters;
    ucFileAssociation* m_associations;
    ucLangProperties* m_languages;
    ucMarco* m_macros;
    ucFont* m_font;
    ucPropFindReplace* m_find;
    QPushButton* m_apply = nullptr;
    bool m_initialised = false;
};
