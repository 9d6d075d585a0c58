#include "hex/find/HexReplacePanel.h"

#include "hex/bytes/HexText.h"
#include "hex/find/HexFindTarget.h"
#include "widgets/BusyPointer.h"
#include "widgets/ComboHistory.h"
#include "widgets/KeyFilterEdit.h"

#include <QComboBox>
#include <QPointer>
#include <QPushButton>

HexReplacePanel::HexReplacePanel(const HexFindRules& rules, const HexFindDesk& desk, QWidget* parent)
    : HexFindPanel(rules, desk, parent),
      m_replacement(addBox("Text2", "Replace With:", rules.replaceHistory)),
      m_replace(addButton("cmdReplace", "Replace", "Alt+R")),
      m_replaceAll(addButton("cmdReplaceAll", "Replace All", "Alt+A")) {
    connect(this, &HexFindPanel::termEdited, m_replace, [this] { setMatchWaits(false); });
    if (!rules.isText)
        connect(editOf(m_replacement), &QLineEdit::textEdited, this, &HexReplacePanel::forgetFound);
    connect(editOf(m_replacement), &KeyFilterEdit::enterPressed, this, &HexReplacePanel::cmdFindNext);
    connect(m_replace, &QPushButton::clicked, this, &HexReplacePanel::cmdReplace);
    connect(m_replaceAll, &QPushButton::clicked, this, &HexReplacePanel::cmdReplaceAll);
}

void HexReplacePanel::InitControl(HexFindTarget* target, bool locked) {
    HexFindPanel::InitControl(target, locked);
    LoadComboHistory(QString::fromLatin1(rules().replaceHistory), *m_replacement);
    m_replace->setEnabled(!locked);
    m_replaceAll->setEnabled(!locked);
    setMatchWaits(false);
}

bool HexReplacePanel::checkInput() {
    return HexFindPanel::checkInput() && checkBox(m_replacement);
}

void HexReplacePanel::fitReplacement() {
    if (rules().fillsBeforeSearch)
        fillReplacement();
}

void HexReplacePanel::fillReplacement() {
    const QString text = m_replacement->currentText();
    if (text.size() < term().size())
        m_replacement->setEditText(text + term().mid(text.size()));
}

QString HexReplacePanel::hexText() const {
    QString text = m_replacement->currentText();
    if (!rules().isText)
        return text;
    const QByteArray digits = HexText::bytesOfText(text).value_or(QByteArray()).toHex().toUpper();
    return HexText::SpaceHexText(QString::fromLatin1(digits));
}

void HexReplacePanel::setMatchWaits(bool waits) {
    m_matchWaits = waits;
    m_replace->setProperty("Tag", waits ? u"replace"_qs : QString());
}

void HexReplacePanel::keepMatch() {
    setMatchWaits(true);
}

void HexReplacePanel::cmdReplace() {
    if (target() == nullptr || !checkInput())
        return;
    fitReplacement();
    const QPointer<HexReplacePanel> guard(this);
    if (m_matchWaits)
        target()->ReplaceBytes(hexText(), foundAt());
    if (!guard || target() == nullptr)
        return;
    if (searchOn() != Outcome::Missed)
        return;
    if (foundAt() > 0)
        target()->FillGrid();
    reportMiss(u"Replace Completed"_qs);
}

void HexReplacePanel::cmdReplaceAll() {
    if (target() == nullptr || !checkInput())
        return;
    fillReplacement();
    if (rules().cutsForAll)
        m_replacement->setEditText(m_replacement->currentText().left(term().size()));
    const QPointer<HexReplacePanel> guard(this);
    BusyPointer::show();
    const int number = target()->ReplaceAll(term(), hexText(), static_cast<qint16>(findType()));
    BusyPointer::restore();
    if (!guard || target() == nullptr)
        return;
    const bool wasStopped = target()->wasSearchStopped();
    if (number == 0 && !wasStopped)
        return report(u"Not Found"_qs);
    forgetFound();
    if (rules().isText)
        setMatchWaits(false);
    if (wasStopped)
        return reportStop(number);
    report(QString::fromLatin1(rules().replacedAll).arg(number));
}

void HexReplacePanel::keepHistories() {
    HexFindPanel::keepHistories();
    AddComboHistory(*m_replacement, m_replacement->currentText(), ComboHistorySize, RaiseComboHistory);
    SaveComboHistory(QString::fromLatin1(rules().replaceHistory), *m_replacement);
}
