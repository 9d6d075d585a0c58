#include "hex/find/HexFindPanel.h"

#include "hex/bytes/HexFindState.h"
#include "hex/bytes/HexText.h"
#include "hex/find/HexFindTarget.h"
#include "settings/Options.h"
#include "widgets/BusyPointer.h"
#include "widgets/ComboHistory.h"
#include "widgets/KeyFilterEdit.h"
#include "widgets/Prompts.h"

#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int TermWidth = 32;  ///< characters
constexpr int LinesOfRefusal = 2;

/// The first character of a text that Windows-1252 lacks; empty when there is none.
QString strangerIn(const QString& text) {
    for (const char32_t character : text.toUcs4()) {
        QString one = QString::fromUcs4(&character, 1);
        if (!HexText::bytesOfText(one))
            return one;
    }
    return {};
}

}  // namespace

HexFindPanel::HexFindPanel(const HexFindRules& rules, const HexFindDesk& desk, QWidget* parent)
    : QWidget(parent),
      m_rules(rules),
      m_desk(desk),
      m_boxes(new QVBoxLayout),
      m_buttons(new QVBoxLayout),
      m_refusal(new QLabel(this)) {
    setObjectName(QString::fromLatin1(rules.name));
    m_term = addBox("Text1", rules.label, rules.findHistory);
    connect(editOf(m_term), &QLineEdit::textEdited, this, &HexFindPanel::termEdited);
    connect(m_term, &QComboBox::textActivated, this, &HexFindPanel::termEdited);
    connect(this, &HexFindPanel::termEdited, this, &HexFindPanel::forgetFound);
    if (rules.isText)
        connect(editOf(m_term), &KeyFilterEdit::enterPressed, this, &HexFindPanel::termEdited);
    if (!rules.replaces())
        connect(editOf(m_term), &KeyFilterEdit::enterPressed, this, &HexFindPanel::cmdFindNext);

    auto* options = new QHBoxLayout;
    options->addWidget(addOptions(" Direction: ", rules.isText ? "Option2" : "Option1", {"&Up", "&Down"}, m_direction));
    m_direction[1]->setChecked(true);
    if (rules.isText)
        options->addWidget(addOptions(" Case: ", "Option1", {"Not Match Case", "Match Case"}, m_case));
    options->addStretch();
    m_refusal->setObjectName(u"lblRefusal"_qs);
    m_refusal->setWordWrap(true);
    m_refusal->setTextFormat(Qt::PlainText);
    m_refusal->setMinimumHeight(LinesOfRefusal * m_refusal->fontMetrics().lineSpacing());
    m_refusal->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    auto* left = new QVBoxLayout;
    left->addLayout(m_boxes);
    left->addLayout(options);
    left->addWidget(m_refusal, 1);
    auto* all = new QHBoxLayout(this);
    all->addLayout(left, 1);
    all->addLayout(m_buttons);

    m_buttons->addStretch();
    m_findNext = addButton("cmdFindNext", "Find Next", "Alt+F");
    connect(m_findNext, &QPushButton::clicked, this, &HexFindPanel::cmdFindNext);
    connect(addButton("cmdCount", "Count", "Alt+C"), &QPushButton::clicked, this, &HexFindPanel::cmdCount);
    connect(addButton("cmdMarkAll", "Mark All", "Alt+M"), &QPushButton::clicked, this, &HexFindPanel::cmdMarkAll);
}

QComboBox* HexFindPanel::addBox(const char* name, const char* label, const char* history) {
    auto* box = new QComboBox(this);
    box->setObjectName(QString::fromLatin1(name));
    box->setProperty("Tag", QString::fromLatin1(history));
    box->setLineEdit(new KeyFilterEdit(m_rules.isText ? KeyFilterEdit::anyKeys() : KeyFilterEdit::hexKeys(), box));
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setCompleter(nullptr);
    box->setMinimumContentsLength(TermWidth);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* caption = new QLabel(QString::fromLatin1(label), this);
    caption->setBuddy(box);
    box->setAccessibleName(caption->text());
    editOf(box)->setAccessibleName(caption->text());
    connect(box, &QComboBox::editTextChanged, m_refusal, &QLabel::clear);
    m_boxes->addWidget(caption);
    m_boxes->addWidget(box);
    if (m_term != nullptr)
        setTabOrder(m_term, box);
    return box;
}

QGroupBox* HexFindPanel::addOptions(const char* title, const char* name, const std::array<const char*, 2>& captions,
                                    std::array<QRadioButton*, 2>& options) {
    auto* frame = new QGroupBox(QString::fromLatin1(title), this);
    auto* layout = new QVBoxLayout(frame);
    for (std::size_t i = 0; i < options.size(); ++i) {
        options[i] = new QRadioButton(QString::fromLatin1(captions[i]), frame);
        options[i]->setObjectName(u"%1(%2)"_qs.arg(QLatin1String(name)).arg(i));
        layout->addWidget(options[i]);
    }
    return frame;
}

/// The captions have no letter underlined, so the tool tips name the keys.
QPushButton* HexFindPanel::addButton(const char* name, const char* caption, const char* shortcut) {
    auto* button = new QPushButton(QString::fromLatin1(caption), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setShortcut(QKeySequence(QString::fromLatin1(shortcut)));
    button->setToolTip(u"%1 (%2)"_qs.arg(button->text(), button->shortcut().toString(QKeySequence::NativeText)));
    m_buttons->insertWidget(m_buttons->count() - 1, button);
    return button;
}

KeyFilterEdit* HexFindPanel::editOf(const QComboBox* box) {
    return static_cast<KeyFilterEdit*>(box->lineEdit());
}

void HexFindPanel::InitControl(HexFindTarget* target, bool) {
    m_target = target;
    LoadComboHistory(QString::fromLatin1(m_rules.findHistory), *m_term);
    if (m_rules.isText)
        m_case[m_desk.options.CaseSensitiveOn ? 1 : 0]->setChecked(true);
    forgetFound();
}

void HexFindPanel::letGoOfTarget() {
    m_target = nullptr;
}

HexFindTarget* HexFindPanel::target() const {
    return m_target;
}

void HexFindPanel::focusTerm() {
    m_term->setFocus();
    m_term->lineEdit()->selectAll();
}

QString HexFindPanel::term() const {
    return m_term->currentText();
}

HexFindType HexFindPanel::findType() const {
    if (!m_rules.isText)
        return HexFindType::Bytes;
    return m_case[1]->isChecked() ? HexFindType::ExactCase : HexFindType::AnyCase;
}

// What can be used

bool HexFindPanel::checkInput() {
    return checkBox(m_term);
}

bool HexFindPanel::checkBox(QComboBox* box) {
    if (!m_rules.isText)
        box->setEditText(HexText::NormalizeHexText(box->currentText()));
    const QString text = box->currentText();
    if (text.trimmed().isEmpty()) {
        box->setFocus();
        return false;
    }
    if (!m_rules.isText && !HexText::bytesOfHexText(text))
        return refuse(box, u"Only the digits 0 to 9 and A to F make a byte sequence."_qs);
    if (const QString stranger = m_rules.isText ? strangerIn(text) : QString(); !stranger.isEmpty())
        return refuse(box, u"“%1” is no character of Windows-1252, so no byte stands for it."_qs.arg(stranger));
    return true;
}

bool HexFindPanel::refuse(QComboBox* box, const QString& why) {
    say(why);
    box->setFocus();
    return false;
}

void HexFindPanel::say(const QString& text) {
    m_refusal->setText(text);
    QAccessibleEvent event(m_refusal, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

// The buttons

int HexFindPanel::search() const {
    BusyPointer::show();
    const auto type = static_cast<qint16>(findType());
    const bool isUp = m_direction[0]->isChecked();
    const int position = isUp ? m_target->FindUp(term(), type) : m_target->FindDown(term(), type);
    BusyPointer::restore();
    return position;
}

void HexFindPanel::cmdFindNext() {
    if (m_target == nullptr || !checkInput())
        return;
    fitReplacement();
    if (searchOn() == Outcome::Missed)
        reportMiss(u"Find Completed"_qs);
}

HexFindPanel::Outcome HexFindPanel::searchOn() {
    const QPointer<HexFindPanel> guard(this);
    m_refusal->clear();
    const int position = search();
    if (!guard || m_target == nullptr)
        return Outcome::Ended;
    if (m_target->wasSearchStopped()) {
        say(u"Stopped."_qs);
        return Outcome::Ended;
    }
    if (position < 0)
        return Outcome::Missed;
    m_foundAt = position;
    m_desk.state.HexFindActive = true;
    keepMatch();
    keepHistories();
    return Outcome::Found;
}

void HexFindPanel::reportStop(int matches) {
    keepHistories();  // may set the texts of the boxes, which clears what is said
    say(u"Stopped after %1."_qs.arg(matches));
}

void HexFindPanel::reportMiss(const QString& completed) {
    if (m_foundAt != NothingFound)
        return report(completed);
    m_desk.state.HexFindActive = false;
    report(u"Not Found"_qs);
}

void HexFindPanel::cmdCount() {
    reportNumber(m_rules.counted, &HexFindTarget::CountBytes);
}

void HexFindPanel::cmdMarkAll() {
    reportNumber(m_rules.marked, &HexFindTarget::MarkAll);
}

void HexFindPanel::reportNumber(const char* text, int (HexFindTarget::*work)(const QString&, qint16)) {
    if (m_target == nullptr || !checkInput())
        return;
    const QPointer<HexFindPanel> guard(this);
    m_refusal->clear();
    BusyPointer::show();
    const int number = (m_target->*work)(term(), static_cast<qint16>(findType()));
    BusyPointer::restore();
    if (!guard || m_target == nullptr)
        return;
    if (m_target->wasSearchStopped())
        return reportStop(number);
    report(QString::fromLatin1(text).arg(term().trimmed(), QString::number(number)));
}

void HexFindPanel::report(const QString& text) {
    const QPointer<HexFindPanel> guard(this);
    m_desk.prompts.message(window(), text);
    if (guard)
        keepHistories();
}

void HexFindPanel::keepHistories() {
    AddComboHistory(*m_term, m_term->currentText(), ComboHistorySize, RaiseComboHistory);
    SaveComboHistory(QString::fromLatin1(m_rules.findHistory), *m_term);
}
