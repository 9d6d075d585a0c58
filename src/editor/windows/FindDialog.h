#pragma once

#include "editor/windows/MatchHighlight.h"
#include "text/search/MatchScan.h"

#include <QDialog>

#include <memory>
#include <vector>

class TextControl;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;
class SearchRange;
enum class SearchOutcome;

/// The control's find dialog, and its replace dialog, which has some more controls. Modeless; a child of the control
/// and destroyed with it. Flags and text of its searches become the control's. Errors are shown in the dialog itself.
/// "Within the selection" is the selection at the time it was opened, or a later one made by the user. It closes when
/// another text of the window gets the focus. The control emits AfterFind after each search, and when a dialog that has
/// searched is closed.
class FindDialog : public QDialog {
    Q_OBJECT

 public:
    enum class Kind { Find, Replace };

    FindDialog(TextControl& control, Kind kind);
    ~FindDialog() override;
    static QString nameOf(Kind kind);

    /// Shows the dialog with the control's flags, and the selected text or else the last one searched for.
    void begin();
    void done(int result) override;

 protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void layOutFields(QGridLayout& grid);
    void layOutChecks(QGridLayout& grid);
    void layOutButtons(QGridLayout& grid);
    QComboBox* addField(QGridLayout& grid, int row, const QString& name, const QString& caption);
    QCheckBox* addCheck(QGridLayout& grid, int row, int column, const QString& name, const QString& caption);
    QPushButton* addButton(QGridLayout& grid, int row, const QString& name, const QString& caption,
                           void (FindDialog::*act)());
    void takeControl();
    void fillHistories();
    void giveControl();
    QString textToBegin() const;
    void focusMoved(QWidget* before, QWidget* now);
    void placeInCorner();
    void uncoverMatch();
    std::vector<TextMatch> chosenRanges() const;

    template <typename Search>
    void search(Search search, bool backwards);
    void findNext();
    void findPrevious();
    void replace();
    void replaceAll();
    void count();
    void finishSearch(SearchOutcome outcome, bool backwards);
    void finishAll(qint64 count, const QString& sentence);
    void tellOfSearch();
    void showError();
    void enableButtons();

    TextControl& m_control;
    Kind m_kind;
    QComboBox* m_find = nullptr;
    QComboBox* m_replacement = nullptr;
    QCheckBox* m_matchCase = nullptr;
    QCheckBox* m_wholeWord = nullptr;
    QCheckBox* m_regExp = nullptr;
    QCheckBox* m_preserveCase = nullptr;
    QCheckBox* m_inSelection = nullptr;
    QLabel* m_result = nullptr;
    bool m_searched = false;  ///< since it was opened
    std::unique_ptr<SearchRange> m_range;
    std::unique_ptr<MatchHighlight::Hold> m_highlight;
};
