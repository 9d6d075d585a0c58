#include "hex/frmGotoOffSet.h"

#include "hex/KeyFilterEdit.h"
#include "platform/Prompts.h"

#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include <optional>

namespace {

constexpr double Largest = 1e15;

/// As typed: decimal, or hexadecimal of 32 bits behind "&H".
std::optional<qint64> numberOf(const QString& text) {
    bool isNumber = false;
    if (text.startsWith(QStringLiteral("&H"))) {
        const quint32 number = text.mid(2).toUInt(&isNumber, 16);
        return isNumber ? std::optional<qint64>(static_cast<qint32>(number)) : std::nullopt;
    }
    const double number = text.toDouble(&isNumber);
    return isNumber && qAbs(number) < Largest ? std::optional<qint64>(qRound64(number)) : std::nullopt;
}

}  // namespace

frmGotoOffSet::frmGotoOffSet(Prompts& prompts, QWidget* parent)
    : HexDialog(QStringLiteral("frmGotoOffSet"), QStringLiteral("Go to Offset"), parent),
      m_prompts(prompts),
      m_text(new KeyFilterEdit(KeyFilterEdit::hexKeys(), this)),
      m_hex(new QRadioButton(QStringLiteral("&Hex"), this)) {
    auto* label = new QLabel(QStringLiteral("&Offset:"), this);
    label->setObjectName(QStringLiteral("Label1"));
    label->setBuddy(m_text);
    m_text->setObjectName(QStringLiteral("Text1"));
    auto* decimal = new QRadioButton(QStringLiteral("&Dec"), this);
    decimal->setObjectName(QStringLiteral("Option1(0)"));
    decimal->setChecked(true);
    m_hex->setObjectName(QStringLiteral("Option1(1)"));
    auto* layout = new QVBoxLayout(this);
    for (QWidget* part : {static_cast<QWidget*>(label), static_cast<QWidget*>(m_text), static_cast<QWidget*>(decimal),
                          static_cast<QWidget*>(m_hex), makeButtons()})
        layout->addWidget(part);
    connect(m_text, &KeyFilterEdit::enterPressed, this, &frmGotoOffSet::accept);
    m_text->setFocus();
}

/// The mark of a hexadecimal number stays in the box, so that a second try gets a second one.
bool frmGotoOffSet::checkInput() {
    if (m_hex->isChecked())
        m_text->setText(QStringLiteral("&H") + m_text->text());
    const std::optional<qint64> number = numberOf(m_text->text());
    if (number) {
        m_value = *number;
        return true;
    }
    m_prompts.message(this, QStringLiteral("Please enter numeric value"));
    m_text->selectAll();
    m_text->setFocus();
    return false;
}
