#include "hex/forms/frmGotoOffSet.h"

#include "hex/forms/TypedPlace.h"
#include "widgets/KeyFilterEdit.h"
#include "widgets/Prompts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

frmGotoOffSet::frmGotoOffSet(Prompts& prompts, QWidget* parent)
    : HexDialog(QStringLiteral("frmGotoOffSet"), QStringLiteral("Go to Offset"), parent),
      m_prompts(prompts),
      m_text(new KeyFilterEdit(KeyFilterEdit::hexKeys(), this)),
      m_hex(new QRadioButton(QStringLiteral("&Hex"), this)) {
    m_text->setObjectName(QStringLiteral("Text1"));
    auto* decimal = new QRadioButton(QStringLiteral("&Dec"), this);
    decimal->setObjectName(QStringLiteral("Option1(0)"));
    decimal->setChecked(true);
    m_hex->setObjectName(QStringLiteral("Option1(1)"));
    auto* bases = new QHBoxLayout;
    bases->addWidget(decimal);
    bases->addWidget(m_hex);
    bases->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(makeLabel(QStringLiteral("Label1"), QStringLiteral("&Offset:"), m_text));
    layout->addWidget(m_text);
    layout->addLayout(bases);
    layout->addWidget(makeButtons());
    connect(m_text, &KeyFilterEdit::enterPressed, this, &frmGotoOffSet::accept);
    m_text->setFocus();
}

/// The mark of a hexadecimal number stays in the box, so that a second try gets a second one.
bool frmGotoOffSet::checkInput() {
    if (m_hex->isChecked())
        m_text->setText(QStringLiteral("&H") + m_text->text());
    const std::optional<qint64> number = TypedPlace::offsetOf(m_text->text());
    if (number) {
        m_value = *number;
        return true;
    }
    m_prompts.message(this, QStringLiteral("Please enter numeric value"));
    m_text->selectAll();
    m_text->setFocus();
    return false;
}
