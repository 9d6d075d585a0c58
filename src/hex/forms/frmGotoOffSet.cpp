#include "hex/forms/frmGotoOffSet.h"

#include "hex/forms/TypedPlace.h"
#include "widgets/KeyFilterEdit.h"
#include "widgets/Prompts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

frmGotoOffSet::frmGotoOffSet(Prompts& prompts, QWidget* parent)
    : HexDialog(u"frmGotoOffSet"_qs, u"Go to Offset"_qs, parent),
      m_prompts(prompts),
      m_text(new KeyFilterEdit(KeyFilterEdit::hexKeys(), this)),
      m_hex(new QRadioButton(u"&Hex"_qs, this)) {
    m_text->setObjectName(u"Text1"_qs);
    auto* decimal = new QRadioButton(u"&Dec"_qs, this);
    decimal->setObjectName(u"Option1(0)"_qs);
    decimal->setChecked(true);
    m_hex->setObjectName(u"Option1(1)"_qs);
    auto* bases = new QHBoxLayout;
    bases->addWidget(decimal);
    bases->addWidget(m_hex);
    bases->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(makeLabel(u"Label1"_qs, u"&Offset:"_qs, m_text));
    layout->addWidget(m_text);
    layout->addLayout(bases);
    layout->addWidget(makeButtons());
    connect(m_text, &KeyFilterEdit::enterPressed, this, &frmGotoOffSet::accept);
    m_text->setFocus();
}

/// The mark of a hexadecimal number stays in the box, so that a second try gets a second one.
bool frmGotoOffSet::checkInput() {
    if (m_hex->isChecked())
        m_text->setText(u"&H"_qs + m_text->text());
    const std::optional<qint64> number = TypedPlace::offsetOf(m_text->text());
    if (number) {
        m_value = *number;
        return true;
    }
    m_prompts.message(this, u"Please enter numeric value"_qs);
    m_text->selectAll();
    m_text->setFocus();
    return false;
}
