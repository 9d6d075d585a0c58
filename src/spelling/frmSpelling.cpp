#include "spelling/frmSpelling.h"

#include "spelling/check/WordContext.h"
#include "widgets/BusyPointer.h"
#include "widgets/Contrast.h"
#include "widgets/Prompts.h"

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <utility>

using std::chrono::milliseconds;
using State = SpellingSession::State;

namespace {

constexpr milliseconds Step{15};
/// How long the form is kept from the screen, when perhaps there is nothing to decide.
constexpr qint64 HiddenMilliseconds = 300;
/// From when on the form shows that the user has to wait.
constexpr qint64 PatientMilliseconds = 200;
constexpr int ContextLines = 3;
constexpr int ContextWidth = 56;  ///< characters
constexpr int ListLines = 6;
const QColor MistakeColour(200, 30, 30);

}  // namespace

frmSpelling::frmSpelling(const QString& text, std::vector<Dictionary> dictionaries, std::size_t first, Prompts& prompts,
                         QWidget* parent)
    : QDialog(parent),
      m_prompts(prompts),
      m_dictionaries(std::move(dictionaries)),
      m_session(text, m_ownWords),
      m_current(first),
      m_working(m_dictionaries.size()),
      m_isBroken(m_dictionaries.size(), false) {
    setObjectName(u"frmSpelling"_qs);
    setWindowTitle(u"Spelling"_qs);
    setWindowIcon(QGuiApplication::windowIcon());
    setModal(true);
    auto* columns = new QHBoxLayout(this);
    columns->addLayout(makeFields(), 1);
    columns->addLayout(makeButtons());
    connectFields();
    m_word->setFocus();
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &frmSpelling::work);
}

frmSpelling::~frmSpelling() {
    BusyPointer::restore();
}

// Layout

void frmSpelling::setFieldName(QWidget& field, const char* name, QLabel& label) {
    field.setObjectName(QString::fromLatin1(name));
    field.setAccessibleName(label.text().remove(u'&').remove(u':'));
    label.setBuddy(&field);
}

QLayout* frmSpelling::makeFields() {
    auto* fields = new QGridLayout;
    const auto addRow = [this, fields](const QString& caption, const char* name, QWidget* field) {
        auto* label = new QLabel(caption, this);
        setFieldName(*field, name, *label);
        fields->addWidget(label, fields->rowCount(), 0, 1, 2);
        fields->addWidget(field, fields->rowCount(), 0, 1, 2);
    };
    m_context = new QTextEdit(this);
    m_context->setReadOnly(true);
    m_context->setTabChangesFocus(true);
    m_context->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_context->setFixedHeight(ContextLines * fontMetrics().lineSpacing() +
                              2 * static_cast<int>(m_context->document()->documentMargin()) +
                              2 * m_context->frameWidth());
    m_context->setMinimumWidth(ContextWidth * fontMetrics().averageCharWidth());
    addRow(u"&Not in the dictionary:"_qs, "txtContext", m_context);
    m_word = new QLineEdit(this);
    addRow(u"Change &to:"_qs, "txtWord", m_word);
    m_suggestions = new QListWidget(this);
    m_suggestions->setMinimumHeight(ListLines * fontMetrics().lineSpacing());
    addRow(u"&Suggestions:"_qs, "lstSuggestions", m_suggestions);
    m_dictionary = new QComboBox(this);
    for (const Dictionary& each : m_dictionaries) {
        m_dictionary->addItem(each.title, each.name);
        m_dictionary->setItemData(m_dictionary->count() - 1, each.wordsPath, Qt::ToolTipRole);
    }
    m_dictionary->setCurrentIndex(static_cast<int>(m_current));
    addRow(u"&Dictionary:"_qs, "cmbDictionary", m_dictionary);
    m_status = new QLabel(this);
    m_status->setObjectName(u"lbStatus"_qs);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);
    fields->addWidget(m_status, fields->rowCount(), 0, 1, 2);
    return fields;
}

QLayout* frmSpelling::makeButtons() {
    m_change = makeButton("cmdChange", "&Change", "Put this text in the place of the word", &frmSpelling::change);
    m_changeAll =
        makeButton("cmdChangeAll", "Change A&ll", "The same wherever the word comes again", &frmSpelling::changeAll);
    m_ignore = makeButton("cmdIgnore", "&Ignore", "Leave the word as it is", &frmSpelling::ignore);
    m_ignoreAll =
        makeButton("cmdIgnoreAll", "I&gnore All", "Leave the word wherever it comes again", &frmSpelling::ignoreAll);
    m_add = makeButton("cmdAdd", "&Add", "Add the word to your own words, which every check knows", &frmSpelling::add);
    m_undo = makeButton("cmdUndo", "&Undo", "Back to the last word, as if you had not decided", &frmSpelling::undo);
    m_cancel = makeButton("cmdCancel", "Cancel", "End the check; what you changed stays (Esc)", &frmSpelling::reject);
    m_change->setDefault(true);
    m_cancel->setAutoDefault(false);
    auto* column = new QVBoxLayout;
    for (QPushButton* each : {m_change, m_changeAll, m_ignore, m_ignoreAll, m_add})
        column->addWidget(each);
    column->addStretch();
    column->addWidget(m_undo);
    column->addWidget(m_cancel);
    return column;
}

QPushButton* frmSpelling::makeButton(const char* name, const char* caption, const char* toolTip,
                                     void (frmSpelling::*clicked)()) {
    auto* button = new QPushButton(QString::fromLatin1(caption), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(QString::fromLatin1(toolTip));
    connect(button, &QPushButton::clicked, this, clicked);
    return button;
}

void frmSpelling::connectFields() {
    connect(m_word, &QLineEdit::textChanged, this, &frmSpelling::enableButtons);
    connect(m_suggestions, &QListWidget::currentTextChanged, this, [this](const QString& text) {
        if (!text.isEmpty())
            m_word->setText(text);
    });
    // Not for the Return key, which presses the default button too.
    connect(m_suggestions, &QListWidget::itemDoubleClicked, this, &frmSpelling::change);
    connect(m_dictionary, &QComboBox::activated, this, &frmSpelling::chooseDictionary);
}

void frmSpelling::done(int result) {
    m_timer.stop();
    BusyPointer::restore();
    QDialog::done(result);
}

void frmSpelling::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_shown.length > 0)
        showContext();
}

// The check

bool frmSpelling::run() {
    m_session.setDictionary(m_dictionaries[m_current]);
    beginHidden();
    if (m_session.state() == State::Finished)
        return true;
    if (m_hasFailed)
        return false;
    goOn();
    const QPointer<frmSpelling> guard(this);
    exec();
    return guard && !m_hasFailed;
}

/// What is quickly done need not be seen.
void frmSpelling::beginHidden() {
    BusyPointer::show();
    m_sinceDecision.start();
    while (m_session.hasWork() && !m_sinceDecision.hasExpired(HiddenMilliseconds)) {
        if (m_session.step(Step) == State::Failed)
            settleFailure();
    }
    BusyPointer::restore();
}

void frmSpelling::goOn() {
    showState(m_session.state());
    if (m_session.hasWork())
        m_timer.start(0);
}

void frmSpelling::work() {
    showState(m_session.step(Step));
    if (m_session.hasWork())
        m_timer.start(0);
}

void frmSpelling::showState(State state) {
    takeWorkingDictionary();
    switch (state) {
        case State::Working:
            showWait();
            break;
        case State::AtMistake:
            setWaiting(false);
            if (m_shown.length == 0)
                showMistake();
            if (!m_session.hasWork() && !m_hasSuggestions)
                showSuggestions();
            break;
        case State::Finished:
            accept();
            break;
        case State::Failed:
            settleFailure();
            break;
    }
}

// What is shown

void frmSpelling::showMistake() {
    m_shown = m_session.place();
    m_hasSuggestions = false;
    m_suggestions->clear();
    m_word->setText(m_session.word());
    m_word->selectAll();
    const QString line = u"Line %1"_qs.arg(lineOfMistake());
    m_status->setText(m_error.isEmpty() ? line : line + u'\n' + m_error);
    m_cancel->setText(m_session.corrections().count() > 0 ? u"Close"_qs : u"Cancel"_qs);
    showContext();
    enableButtons();
}

void frmSpelling::showContext() {
    const WordContext context = WordContext::of(m_session);
    const QPalette colours = m_context->palette();
    QTextCharFormat plain;
    plain.setForeground(colours.color(QPalette::Text));
    QTextCharFormat marked;
    marked.setForeground(Contrast::readableOn(colours.color(QPalette::Base), MistakeColour));
    marked.setFontWeight(QFont::Bold);
    marked.setFontUnderline(true);
    m_context->clear();
    QTextCursor cursor(m_context->document());
    cursor.insertText(context.before, plain);
    const int word = cursor.position();
    cursor.insertText(context.word, marked);
    cursor.insertText(context.behind, plain);
    cursor.setPosition(word);
    m_context->setTextCursor(cursor);
    m_context->ensureCursorVisible();
}

/// The first one is put into the field, unless the user has begun to type there.
void frmSpelling::showSuggestions() {
    m_hasSuggestions = true;
    m_suggestions->addItems(m_session.suggestions());
    if (m_suggestions->count() > 0 && m_word->text() == m_session.word()) {
        m_suggestions->setCurrentRow(0);
        m_word->selectAll();
    }
}

void frmSpelling::showWait() {
    if (!m_sinceDecision.hasExpired(PatientMilliseconds))
        return;
    setWaiting(true);
    m_status->setText(m_session.isDictionaryLoaded() ? u"Checking, %1 % done"_qs.arg(m_session.percent())
                                                     : u"Loading the dictionary"_qs);
}

/// Meanwhile the keyboard is kept away from the button that ends the check.
void frmSpelling::setWaiting(bool waiting) {
    if (m_isWaiting == waiting)
        return;
    m_isWaiting = waiting;
    if (waiting) {
        BusyPointer::show();
        m_focusBefore = focusWidget();
        m_word->setFocus();
        enableButtons();
        return;
    }
    BusyPointer::restore();
    enableButtons();
    if (m_focusBefore)
        m_focusBefore->setFocus();
}

void frmSpelling::enableButtons() {
    const bool canDecide = !m_isWaiting && m_session.state() == State::AtMistake;
    const bool canChange = canDecide && !m_word->text().isEmpty() && m_word->text() != m_session.word();
    m_word->setReadOnly(m_isWaiting);
    for (QWidget* each : {m_ignore, m_ignoreAll, m_add})
        each->setEnabled(canDecide);
    for (QWidget* each : {m_change, m_changeAll})
        each->setEnabled(canChange);
    m_suggestions->setEnabled(!m_isWaiting);
    m_undo->setEnabled(canDecide && m_session.canUndo());
}

qint64 frmSpelling::lineOfMistake() {
    const qsizetype position = m_session.place().position;
    if (position < m_countedTo) {
        m_countedTo = 0;
        m_countedLines = 1;
    }
    const QStringView between = QStringView(m_session.text()).mid(m_countedTo, position - m_countedTo);
    m_countedLines += lineAt(between, between.size()) - 1;
    m_countedTo = position;
    return m_countedLines;
}

// Decisions

void frmSpelling::change() {
    if (m_change->isEnabled()) {
        m_session.change(m_word->text());
        decided();
    }
}

void frmSpelling::changeAll() {
    m_session.changeAll(m_word->text());
    decided();
}

void frmSpelling::ignore() {
    m_session.ignore();
    decided();
}

void frmSpelling::ignoreAll() {
    m_session.ignoreAll();
    decided();
}

void frmSpelling::add() {
    if (const SystemError error = m_session.add())
        m_prompts.message(this, error.description);
    else
        decided();
}

void frmSpelling::undo() {
    if (const SystemError error = m_session.undo())
        m_prompts.message(this, error.description);
    else
        decided();
}

void frmSpelling::decided() {
    m_shown = {};
    m_sinceDecision.start();
    m_timer.stop();
    work();
}

// Dictionaries

void frmSpelling::chooseDictionary(int index) {
    const auto chosen = static_cast<std::size_t>(index);
    if (chosen == m_current)
        return;
    m_current = chosen;
    m_session.setDictionary(m_dictionaries[m_current]);
    decided();
}

void frmSpelling::takeWorkingDictionary() {
    if (!m_session.isDictionaryLoaded() || m_working == m_current)
        return;
    const bool isChosen = m_working < m_dictionaries.size();
    m_working = m_current;
    if (isChosen)
        Q_EMIT dictionaryChosen(m_dictionaries[m_current].name);
}

/// A dictionary that cannot be loaded is replaced by the one before it, or at the beginning by any other.
void frmSpelling::settleFailure() {
    const QString reason = m_session.error();
    m_isBroken[m_current] = m_isBroken[m_current] || !m_session.isDictionaryLoaded();
    if (m_error.isEmpty() || isVisible())
        m_error = reason;
    if (m_session.isDictionaryLoaded() || !tryAnotherDictionary()) {
        m_hasFailed = true;
        done(Rejected);
        return;
    }
    m_dictionary->setCurrentIndex(static_cast<int>(m_current));
    if (!isVisible())
        return;
    const QPointer<frmSpelling> guard(this);
    m_prompts.message(this, std::exchange(m_error, QString()));
    if (guard)
        goOn();
}

bool frmSpelling::tryAnotherDictionary() {
    const auto usable = std::ranges::find(m_isBroken, false);
    if (m_working < m_dictionaries.size() && m_working != m_current)
        m_current = m_working;
    else if (usable != m_isBroken.end())
        m_current = static_cast<std::size_t>(usable - m_isBroken.begin());
    else
        return false;
    m_session.setDictionary(m_dictionaries[m_current]);
    return true;
}
