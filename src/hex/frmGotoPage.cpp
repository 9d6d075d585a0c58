#include "hex/frmGotoPage.h"

#include "hex/KeyFilterEdit.h"
#include "platform/Prompts.h"

#include <QLabel>
#include <QVBoxLayout>

frmGotoPage::frmGotoPage(Prompts& prompts, qint64 pages, QWidget* parent)
    : HexDialog(QStringLiteral("frmGotoPage"), QStringLiteral("Go to Page"), parent),
      m_prompts(prompts),
      m_text(new KeyFilterEdit(KeyFilterEdit::decimalKeys(), this)) {
    auto* label = new QLabel(QStringLiteral("&Page:"), this);
    label->setObjectName(QStringLiteral("Label1"));
    label->setBuddy(m_text);
    auto* range = new QLabel(QStringLiteral("1  -  ") + QString::number(pages), this);
    range->setObjectName(QStringLiteral("Label2"));
    m_text->setObjectName(QStringLiteral("Text1"));
    auto* layout = new QVBoxLayout(this);
    for (QWidget* part :
         {static_cast<QWidget*>(label), static_cast<QWidget*>(range), static_cast<QWidget*>(m_text), makeButtons()})
        layout->addWidget(part);
    connect(m_text, &KeyFilterEdit::enterPressed, this, &frmGotoPage::accept);
    m_text->setFocus();
}

bool frmGotoPage::checkInput() {
    bool isNumber = false;
    m_value = m_text->text().toLongLong(&isNumber);
    if (!isNumber) {
        m_prompts.message(this, QStringLiteral("Please enter numeric value"));
        m_text->selectAll();
        m_text->setFocus();
        return false;
    }
    if (m_value < 1) {
        m_value = 1;
        m_text->setText(QStringLiteral("1"));
    }
    return true;
}
