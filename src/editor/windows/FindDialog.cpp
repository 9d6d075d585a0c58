#include "editor/windows/FindDialog.h"

#include "editor/control/ControlReplace.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/ScintillaCalls.h"
#include "editor/control/SearchHistory.h"
#include "editor/control/TextControl.h"
#include "editor/windows/SearchRange.h"
#include "editor/windows/SearchSentences.h"
#include "widgets/DialogPlace.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>

#include <utility>

namespace {

/// A selection of more units is not used as the text to search for.
constexpr qint64 LongestBegin = 200;
constexpr int FieldWidth = 32;  // characters
constexpr int CheckRow = 2;
constexpr int ResultRow = 5;
constexpr int ButtonColumn = 2;

}  // namespace

QString FindDialog::nameOf(Kind kind) {
    return kind == Kind::Find ? u"FindDialog"_qs : u"ReplaceDialog"_qs;
}

FindDialog::FindDialog(TextControl& control, Kind kind)
    : QDialog(&control),
      m_control(control),
      m_kind(kind),
      m_range(std::make_unique<SearchRange>(control, control.selected(), control.search())) {
    setObjectName(nameOf(kind));
    setWindowTitle(kind == Kind::Find ? tr("Find") : tr("Replace"));
    auto* grid = new QGridLayout(this);
    layOutFields(*grid);
    layOutChecks(*grid);
    layOutButtons(*grid);
    m_result = new QLabel(this);
    m_result->setObjectName(u"lblResult"_qs);
    m_result->setWordWrap(true);
    grid->addWidget(m_result, ResultRow, 0, 1, ButtonColumn);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(ResultRow, 1);
    connect(m_find, &QComboBox::editTextChanged, this, [this] {
        SearchSentences::show(*m_result, {});
        enableButtons();
        giveControl();
    });
    for (const QCheckBox* check : {m_matchCase, m_wholeWord, m_regExp})
        connect(check, &QCheckBox::clicked, this, &FindDialog::giveControl);
    connect(&control, &TextControl::aboutToBeDestroyed, this, [this] { delete this; });
    connect(qApp, &QApplication::focusChanged, this, &FindDialog::focusMoved);
}

FindDialog::~FindDialog() = default;

// Layout

QComboBox* FindDialog::addField(QGridLayout& grid, int row, const QString& name, const QString& caption) {
    auto* label = new QLabel(caption, this);
    auto* field = new QComboBox(this);
    field->setObjectName(name);
    field->setEditable(true);
    field->setInsertPolicy(QComboBox::NoInsert);
    field->setMinimumContentsLength(FieldWidth);
    field->setCompleter(nullptr);
    field->setAccessibleName(QString(caption).remove(u'&').remove(u':'));
    label->setBuddy(field);
    grid.addWidget(label, row, 0);
    grid.addWidget(field, row, 1);
    return field;
}

void FindDialog::layOutFields(QGridLayout& grid) {
    m_find = addField(grid, 0, u"cboFind"_qs, tr("Fi&nd what:"));
    if (m_kind == Kind::Replace)
        m_replacement = addField(grid, 1, u"cboReplace"_qs, tr("Re&place with:"));
}

QCheckBox* FindDialog::addCheck(QGridLayout& grid, int row, int column, const QString& name, const QString& caption) {
    auto* check = new QCheckBox(caption, this);
    check->setObjectName(name);
    grid.addWidget(check, row, column);
    return check;
}

void FindDialog::layOutChecks(QGridLayout& grid) {
    m_matchCase = addCheck(grid, CheckRow, 0, u"chkMatchCase"_qs, tr("Match &case"));
    m_wholeWord = addCheck(grid, CheckRow + 1, 0, u"chkWholeWord"_qs, tr("&Whole word"));
    m_regExp = addCheck(grid, CheckRow + 2, 0, u"chkRegExp"_qs, tr("Regular e&xpression"));
    m_inSelection = addCheck(grid, CheckRow, 1, u"chkInSelection"_qs, tr("&All within the selection"));
    m_inSelection->setToolTip(tr("Concerns Count and Replace All"));
    if (m_kind == Kind::Replace)
        m_preserveCase = addCheck(grid, CheckRow + 1, 1, u"chkPreserveCase"_qs, tr("Preser&ve case"));
}

QPushButton* FindDialog::addButton(QGridLayout& grid, int row, const QString& name, const QString& caption,
                                   void (FindDialog::*act)()) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, act);
    grid.addWidget(button, row, ButtonColumn, Qt::AlignTop);
    return button;
}

void FindDialog::layOutButtons(QGridLayout& grid) {
    int row = 0;
    addButton(grid, row++, u"cmdFindNext"_qs, tr("&Find Next"), &FindDialog::findNext)->setDefault(true);
    addButton(grid, row++, u"cmdFindPrevious"_qs, tr("Find Previo&us"), &FindDialog::findPrevious);
    if (m_kind == Kind::Replace) {
        addButton(grid, row++, u"cmdReplace"_qs, tr("&Replace"), &FindDialog::replace);
        addButton(grid, row++, u"cmdReplaceAll"_qs, tr("Replace A&ll"), &FindDialog::replaceAll);
    }
    addButton(grid, row++, u"cmdCount"_qs, tr("C&ount"), &FindDialog::count);
    auto* close = new QPushButton(tr("Close"), this);
    close->setObjectName(u"cmdClose"_qs);
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    grid.addWidget(close, row, ButtonColumn, Qt::AlignTop);
}

// Opening and closing

void FindDialog::begin() {
    takeControl();
    SearchSentences::show(*m_result, {});
    if (!isVisible())
        placeInCorner();
    show();
    raise();
    activateWindow();
    m_find->setFocus();
    m_find->lineEdit()->selectAll();
}

void FindDialog::done(int result) {
    QDialog::done(result);
    if (std::exchange(m_searched, false))
        Q_EMIT m_control.AfterFind();
}

void FindDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    m_highlight = std::make_unique<MatchHighlight::Hold>(m_control, m_control.search());
}

void FindDialog::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    m_highlight.reset();
}

/// The user works on another text in the same window: this dialog would only be in the way, and be taken for that
/// text's.
void FindDialog::focusMoved(QWidget*, QWidget* now) {
    const auto* other = qobject_cast<const TextControl*>(now);
    if (isVisible() && other != nullptr && other != &m_control && other->window() == m_control.window())
        reject();
}

void FindDialog::keyPressEvent(QKeyEvent* event) {
    const bool shift = event->modifiers() == Qt::ShiftModifier;
    if (event->key() != Qt::Key_F3 || (!shift && event->modifiers() != Qt::NoModifier))
        return QDialog::keyPressEvent(event);
    if (!m_find->currentText().isEmpty())
        shift ? findPrevious() : findNext();
}

// Place on the screen

void FindDialog::placeInCorner() {
    adjustSize();
    const QRect text(m_control.mapToGlobal(QPoint()), m_control.size());
    move(DialogPlace::cornerOf(text, frameGeometry().size(), m_control.screen()->availableGeometry()));
}

void FindDialog::uncoverMatch() {
    const auto at = [this](unsigned message, qint64 byte) {
        return static_cast<int>(ScintillaCalls::ask(m_control, message, 0, byte));
    };
    const auto [from, to] = m_control.selected().selectedBytes();
    const QPoint begin(at(TextControl::SCI_POINTXFROMPOSITION, from), at(TextControl::SCI_POINTYFROMPOSITION, from));
    const QPoint end(at(TextControl::SCI_POINTXFROMPOSITION, to), at(TextControl::SCI_POINTYFROMPOSITION, to));
    const QPoint below(0, static_cast<int>(ScintillaCalls::ask(m_control, TextControl::SCI_TEXTHEIGHT)));
    const QWidget& text = *m_control.viewport();
    const QRect match = QRect(text.mapToGlobal(begin), text.mapToGlobal(end + below)).normalized();
    move(DialogPlace::besideMatch(match, frameGeometry(), m_control.screen()->availableGeometry()));
}

/// The selection if it is within a line, else the text searched for last in any control.
QString FindDialog::textToBegin() const {
    const bool oneLine = m_control.selected().StartLineNo() == m_control.selected().EndLineNo();
    const bool shortEnough = m_control.SelEnd() - m_control.SelStart() <= LongestBegin;
    const QString selected = oneLine && shortEnough ? m_control.SelText() : QString();
    return selected.isEmpty() ? SearchHistory::ofFinds().newestOr(m_control.search().searchText()) : selected;
}

void FindDialog::takeControl() {
    const QString text = textToBegin();
    m_matchCase->setChecked(m_control.SearchCaseSensitive());
    m_wholeWord->setChecked(m_control.SearchWholeWord());
    m_regExp->setChecked(m_control.SearchRegExp());
    m_inSelection->setChecked(m_control.selected().StartLineNo() != m_control.selected().EndLineNo());
    m_range->takeSelection();
    if (m_kind == Kind::Replace) {
        m_preserveCase->setChecked(m_control.search().PreserveCase());
        m_replacement->setEditText(SearchHistory::ofReplacements().newestOr(m_control.search().replacementText()));
    }
    fillHistories();
    m_find->setEditText(text);
    enableButtons();
}

void FindDialog::fillHistories() {
    const auto fill = [](QComboBox& field, const QStringList& entries) {
        const QSignalBlocker quiet(field);
        const QString text = field.currentText();
        const int at = field.lineEdit()->cursorPosition();
        field.clear();
        field.addItems(entries);
        field.setEditText(text);
        field.lineEdit()->setCursorPosition(at);
    };
    fill(*m_find, SearchHistory::ofFinds().entries());
    if (m_replacement != nullptr)
        fill(*m_replacement, SearchHistory::ofReplacements().entries());
}

void FindDialog::giveControl() {
    m_control.setSearchCaseSensitive(m_matchCase->isChecked());
    m_control.setSearchWholeWord(m_wholeWord->isChecked());
    m_control.setSearchRegExp(m_regExp->isChecked());
    m_control.search().setSearchText(m_find->currentText());
    if (m_kind == Kind::Find)
        return;
    m_control.search().setPreserveCase(m_preserveCase->isChecked());
    m_control.search().setReplacementText(m_replacement->currentText());
}

/// An empty text finds nothing; a locked text is not replaced in.
void FindDialog::enableButtons() {
    const bool something = !m_find->currentText().isEmpty();
    for (auto* button : findChildren<QPushButton*>()) {
        const QString name = button->objectName();
        const bool edits = name.startsWith(u"cmdReplace"_qs);
        button->setEnabled(name == u"cmdClose"_qs || (something && !(edits && m_control.Locked())));
    }
}

// Searching

/// The control may be destroyed when its search returns, and this dialog with it.
template <typename Search>
void FindDialog::search(Search search, bool backwards) {
    const QPointer<FindDialog> alive(this);
    giveControl();
    const SearchOutcome outcome = search();
    if (alive)
        finishSearch(outcome, backwards);
}

void FindDialog::findNext() {
    search([this] { return m_control.search().findNext(); }, false);
}

void FindDialog::findPrevious() {
    search([this] { return m_control.search().findPrevious(); }, true);
}

void FindDialog::replace() {
    search([this] { return m_control.replacing().replaceSelectedMatch(); }, false);
}

void FindDialog::replaceAll() {
    const QPointer<FindDialog> alive(this);
    giveControl();
    const qint64 count = m_inSelection->isChecked() ? m_control.replacing().replaceAllIn(chosenRanges())
                                                    : m_control.replacing().replaceAll();
    if (alive)
        finishAll(count, tr("%n replaced", "", static_cast<int>(count)));
}

void FindDialog::count() {
    const QPointer<FindDialog> alive(this);
    giveControl();
    const qint64 count = m_inSelection->isChecked() ? m_control.search().countMatches(chosenRanges())
                                                    : m_control.search().countMatches();
    if (alive)
        finishAll(count, tr("%n found", "", static_cast<int>(count)));
}

/// Of another text than that in which it was chosen there is no range but the selection.
std::vector<TextMatch> FindDialog::chosenRanges() const {
    return m_range->ranges().value_or(m_control.selected().selectedRanges());
}

void FindDialog::finishSearch(SearchOutcome outcome, bool backwards) {
    SearchSentences::show(*m_result, SearchSentences::sentence(m_control.search(), outcome, backwards));
    if (outcome == SearchOutcome::Failed)
        showError();
    else
        uncoverMatch();
    tellOfSearch();
}

void FindDialog::finishAll(qint64 count, const QString& sentence) {
    const QString error = SearchSentences::errorSentence(m_control.search());
    const QString told =
        count == 0 ? SearchSentences::sentence(m_control.search(), SearchOutcome::Failed, false) : sentence;
    SearchSentences::show(*m_result, count == 0 || error.isEmpty() ? told : told + u". "_qs + error);
    showError();
    tellOfSearch();
}

void FindDialog::tellOfSearch() {
    fillHistories();
    m_searched = true;
    Q_EMIT m_control.AfterFind();
}

/// The caret is moved to the error in the expression.
void FindDialog::showError() {
    const qint64 position = m_control.search().searchError().position;
    if (position < 0)
        return;
    m_find->setFocus();
    m_find->lineEdit()->setCursorPosition(static_cast<int>(position));
}
