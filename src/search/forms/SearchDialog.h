#pragma once

#include "search/engine/SearchRequest.h"

#include <QDialog>

#include <array>
#include <utility>
#include <vector>

class Prompts;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QRadioButton;

/// What the two dialogs of the search across files have in common: the text to find, where to look, the conditions, and
/// the histories of the boxes. It is shown again for each search and keeps its options and check boxes meanwhile.
/// Created once, owned by its parent. A message about missing input and the dialog itself run the event loop.
class SearchDialog : public QDialog {
    Q_OBJECT
    Q_PROPERTY(bool rtnSearch MEMBER m_isConfirmed)
    Q_PROPERTY(bool WholeWord MEMBER m_wholeWord)
    Q_PROPERTY(bool CaseSenstive MEMBER m_caseSensitive)
    Q_PROPERTY(bool RegExp MEMBER m_regExp)
    Q_PROPERTY(bool SubDir MEMBER m_subDirectories)

 public:
    /// Shows the dialog and returns when it was answered; true: a search was asked for, which request() describes. A
    /// directory that is not empty replaces the one that was searched last. Files of a project are offered only with a
    /// project. False at once while the dialog is shown already.
    bool ask(bool hasProject, const QString& directory = {});

    /// The search as it was asked for last.
    virtual SearchRequest request() const;

    void accept() override;
    void reject() override;

 public Q_SLOTS:
    /// Each box has a history of its own file, which is named in its property "Tag".
    void LoadHistory();
    void SaveHistory();

 protected:
    struct Words {
        const char* name;  ///< of the object
        const char* title;
        const char* scope;
        const char* start;  ///< caption of the button that starts the search
    };
    SearchDialog(const Words& words, Prompts& prompts, QWidget* parent);

    struct Box {
        const char* name;
        const char* label;
        const char* history;
        const char* toolTip;
    };
    struct Condition {
        const char* name;
        const char* caption;
        const char* toolTip;
    };
    /// Adds a box below the one for the text to find.
    QComboBox* addTerm(const Box& words);
    /// Adds a check box below the others, and to its right if they stand in the second column. When a search is asked
    /// for, the field is set from it.
    void addCondition(const Condition& words, int column, bool& field);

 private:
    QComboBox* addBox(QGridLayout& grid, const Box& words);
    QCheckBox* addCheck(const Condition& words, bool& field);
    void layOutScope(QGridLayout& grid);
    QLayout* makeButtons(const char* startCaption);

    bool checkInput();
    bool refuse(QComboBox& box, const QString& message);
    SearchIn searchIn() const;
    void offerProject(bool hasProject);

 private Q_SLOTS:
    void enableScope();
    void browse();

 private:
    Prompts& m_prompts;
    bool m_isConfirmed = false;
    bool m_wholeWord = false;
    bool m_caseSensitive = false;
    bool m_regExp = false;
    bool m_subDirectories = false;

    QGroupBox* m_scope;
    QGroupBox* m_conditions;
    QGridLayout* m_terms;
    QGridLayout* m_conditionGrid;
    std::vector<QComboBox*> m_boxes;  ///< in the order in which their histories are read
    std::vector<std::pair<QCheckBox*, bool*>> m_checks;
    std::array<QRadioButton*, 3> m_options{};
    QComboBox* m_find = nullptr;
    QComboBox* m_files = nullptr;
    QComboBox* m_directory = nullptr;
    QCheckBox* m_withSubDirectories = nullptr;
};
