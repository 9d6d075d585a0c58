#include "editor/windows/IncrementalSearchBar.h"

#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/KeptView.h"
#include "editor/control/MacroRecorder.h"
#include "editor/control/TextControl.h"
#include "editor/control/Unrecorded.h"
#include "editor/windows/MatchHighlight.h"
#include "editor/windows/SearchSentences.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QToolButton>

namespace {

constexpr int Padding = 3;
constexpr int TextWidth = 240;

/// Keys for this bar while it has the focus, even if a menu uses them.
bool isOwnKey(const QKeyEvent& key) {
    const Qt::KeyboardModifiers others = key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    if (others != Qt::NoModifier)
        return false;
    switch (key.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_F3:
        case Qt::Key_Escape:
        case Qt::Key_Up:
        case Qt::Key_Down:
            return true;
        default:
            return false;
    }
}

}  // namespace

IncrementalSearchBar::IncrementalSearchBar(TextControl& control)
    : QWidget(&control),
      m_control(control),
      m_caption(new QLabel(this)),
      m_text(new QLineEdit(this)),
      m_result(new QLabel(this)) {
    setObjectName(u"IncrementalSearchBar"_qs);
    setAutoFillBackground(true);
    setCursor(Qt::ArrowCursor);
    m_text->setObjectName(u"txtIncrementalSearch"_qs);
    m_text->setMaximumWidth(TextWidth);
    m_text->installEventFilter(this);
    control.installEventFilter(this);
    m_caption->setBuddy(m_text);
    m_result->setObjectName(u"lblIncrementalSearch"_qs);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Padding, Padding, Padding, Padding);
    row->addWidget(m_caption);
    row->addWidget(m_text, 1);
    const auto* previous = addButton(*row, u"cmdIncrementalPrevious"_qs, tr("Previous match"), Qt::UpArrow);
    const auto* next = addButton(*row, u"cmdIncrementalNext"_qs, tr("Next match"), Qt::DownArrow);
    row->addWidget(m_result);
    row->addStretch(1);
    const auto* close = addButton(*row, u"cmdIncrementalClose"_qs, tr("Close"), Qt::NoArrow);

    connect(&control, &TextControl::aboutToBeDestroyed, this, [this] { delete this; });
    connect(m_text, &QLineEdit::textEdited, this, &IncrementalSearchBar::searchTyped);
    connect(previous, &QToolButton::clicked, this, [this] { goOn(true); });
    connect(next, &QToolButton::clicked, this, [this] { goOn(false); });
    connect(close, &QToolButton::clicked, this, &IncrementalSearchBar::finish);
    hide();
}

IncrementalSearchBar::~IncrementalSearchBar() = default;

QToolButton* IncrementalSearchBar::addButton(QHBoxLayout& row, const QString& name, const QString& caption,
                                             Qt::ArrowType arrow) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setAccessibleName(caption);
    button->setToolTip(caption);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    if (arrow == Qt::NoArrow)
        button->setText(caption);
    else
        button->setArrowType(arrow);
    row.addWidget(button);
    return button;
}

void IncrementalSearchBar::setDirection(bool backwards) {
    m_backwards = backwards;
    m_caption->setText(backwards ? tr("Search &backwards:") : tr("&Search:"));
    m_text->setAccessibleName(backwards ? tr("Search backwards") : tr("Search"));
}

void IncrementalSearchBar::begin(bool backwards) {
    const bool open = !isHidden();
    setDirection(backwards);
    if (open) {
        m_text->setFocus();
        if (m_text->text().isEmpty())
            m_text->setText(m_control.search().searchText());
        goOn(backwards);
        return;
    }
    m_atFirst = std::make_unique<KeptView>(m_control);
    m_from = backwards ? m_control.SelEnd() : m_control.SelStart();
    m_stepsAtFirst = m_stepsFrom = recordedSteps();
    m_standsOnMatch = false;
    m_text->clear();
    SearchSentences::show(*m_result, {});
    m_control.setBottomBar(this);
    show();
    m_text->setFocus();
}

void IncrementalSearchBar::searchTyped(const QString& text) {
    m_control.search().setSearchText(text);
    if (text.isEmpty()) {
        m_highlight.reset();
        goBackTo(m_from, m_stepsFrom);
        SearchSentences::show(*m_result, {});
        return;
    }
    if (!m_highlight)
        m_highlight = std::make_unique<MatchHighlight::Hold>(m_control, m_control.search());
    goBackTo(m_from, m_stepsFrom);
    const QPointer<IncrementalSearchBar> alive(this);
    const SearchOutcome outcome = findTyped();
    if (alive)
        report(outcome, m_backwards);
}

/// In a recording this is one search for the whole text, however it was typed.
SearchOutcome IncrementalSearchBar::findTyped() {
    const Unrecorded part(m_control);
    const QPointer<IncrementalSearchBar> alive(this);
    const SearchOutcome outcome = m_control.search().findTyped(m_backwards, m_standsOnMatch);
    if (alive && outcome != SearchOutcome::Failed)
        m_control.macros().noteSearch(m_backwards ? Command::FindPrevious : Command::FindNext);
    return outcome;
}

qsizetype IncrementalSearchBar::recordedSteps() const {
    const MacroRecorder* recorder = m_control.macros().recording();
    return recorder == nullptr ? 0 : recorder->steps().size();
}

/// Where the control was when the recording had so many steps.
void IncrementalSearchBar::goBackTo(qint64 position, qsizetype stepsThen) {
    const Unrecorded part(m_control);
    m_control.setSelection(position, position);
    cutRecording(stepsThen);
}

void IncrementalSearchBar::cutRecording(qsizetype stepsThen) {
    if (MacroRecorder* recorder = m_control.macros().recording())
        recorder->cutTo(stepsThen);
}

/// From the current match; text typed after that is searched for from there.
void IncrementalSearchBar::goOn(bool backwards) {
    setDirection(backwards);
    if (m_text->text().isEmpty())
        return;
    m_control.search().setSearchText(m_text->text());
    const QPointer<IncrementalSearchBar> alive(this);
    const SearchOutcome outcome = backwards ? m_control.search().findPrevious() : m_control.search().findNext();
    if (!alive)
        return;
    report(outcome, backwards);
    m_from = m_control.SelStart();
    m_standsOnMatch = true;
    m_stepsFrom = recordedSteps();
}

void IncrementalSearchBar::report(SearchOutcome outcome, bool backwards) {
    SearchSentences::show(*m_result, SearchSentences::sentence(m_control.search(), outcome, backwards));
}

void IncrementalSearchBar::giveBack() {
    const Unrecorded part(m_control);
    m_control.selected().giveBack(*m_atFirst);
    cutRecording(m_stepsAtFirst);
}

void IncrementalSearchBar::finish() {
    m_highlight.reset();
    hide();
    m_control.setBottomBar(nullptr);
    m_control.setFocus();
}

/// Keys of the text field that must not reach a menu, and Escape in the text, where the caret stays.
bool IncrementalSearchBar::eventFilter(QObject* watched, QEvent* event) {
    const bool pressed = event->type() == QEvent::KeyPress;
    if (!pressed && event->type() != QEvent::ShortcutOverride)
        return QWidget::eventFilter(watched, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (watched == &m_control && pressed && key.key() == Qt::Key_Escape && !isHidden())
        finish();
    if (watched != m_text || !isOwnKey(key))
        return QWidget::eventFilter(watched, event);
    event->accept();
    if (pressed)
        act(key);
    return true;
}

/// On a button of the bar.
void IncrementalSearchBar::keyPressEvent(QKeyEvent* event) {
    event->setAccepted(event->key() == Qt::Key_Escape);
    if (event->isAccepted())
        act(*event);
}

void IncrementalSearchBar::act(const QKeyEvent& key) {
    const bool shift = key.modifiers().testFlag(Qt::ShiftModifier);
    if (key.key() == Qt::Key_Escape) {
        giveBack();
        finish();
    } else if (key.key() == Qt::Key_Up || key.key() == Qt::Key_Down) {
        goOn(key.key() == Qt::Key_Up);
    } else if (key.key() == Qt::Key_F3) {
        goOn(shift);
    } else {
        goOn(shift != m_backwards);
    }
}
