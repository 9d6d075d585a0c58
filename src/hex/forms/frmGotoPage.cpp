#include "hex/forms/frmGotoPage.h"

#include "hex/forms/TypedPlace.h"
#include "widgets/KeyFilterEdit.h"
#include "widgets/Prompts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

frmGotoPage::frmGotoPage(Prompts& prompts, qint64 pages, QWidget* parent)
    : HexDialog(u"frmGotoPage"_qs, u"Go to Page"_qs, parent),
      m_prompts(prompts),
      m_text(new KeyFilterEdit(KeyFilterEdit::decimalKeys(), this)) {
    auto* range = new QLabel(u"1  -  "_qs + QString::number(pages), this);
    range->setObjectName(u"Label2"_qs);
    m_text->setObjectName(u"Text1"_qs);
    auto* heading = new QHBoxLayout;
    heading->addWidget(makeLabel(u"Label1"_qs, u"&Page:"_qs, m_text));
    heading->addWidget(range);
    heading->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(heading);
    layout->addWidget(m_text);
    layout->addWidget(makeButtons());
    connect(m_text, &KeyFilterEdit::enterPressed, this, &frmGotoPage::accept);
    m_text->setFocus();
}

bool frmGotoPage::checkInput() {
    const std::optional<qint64> page = TypedPlace::pageOf(m_text->text());
    if (!page) {
        m_prompts.message(this, u"Please enter numeric value"_qs);
        m_text->selectAll();
        m_text->setFocus();
        return false;
    }
    m_value = *page;
    m_text->setText(QString::number(m_value));
    return true;
}
