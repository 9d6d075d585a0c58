#include "hex/forms/frmGotoPage.h"

#include "hex/forms/TypedPlace.h"
#include "widgets/KeyFilterEdit.h"
#include "widgets/Prompts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

frmGotoPage::frmGotoPage(Prompts& prompts, qint64 pages, QWidget* parent)
    : HexDialog(QStringLiteral("frmGotoPage"), QStringLiteral("Go to Page"), parent),
      m_prompts(prompts),
      m_text(new KeyFilterEdit(KeyFilterEdit::decimalKeys(), this)) {
    auto* range = new QLabel(QStringLiteral("1  -  ") + QString::number(pages), this);
    range->setObjectName(QStringLiteral("Label2"));
    m_text->setObjectName(QStringLiteral("Text1"));
    auto* heading = new QHBoxLayout;
    heading->addWidget(makeLabel(QStringLiteral("Label1"), QStringLiteral("&Page:"), m_text));
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
        m_prompts.message(this, QStringLiteral("Please enter numeric value"));
        m_text->selectAll();
        m_text->setFocus();
        return false;
    }
    m_value = *page;
    m_text->setText(QString::number(m_value));
    return true;
}
