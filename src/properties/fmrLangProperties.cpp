#include "properties/fmrLangProperties.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

fmrLangProperties::fmrLangProperties(const DocumentServices& services, ucLangProperties::ShowHelp showHelp,
                                     QWidget* parent)
    : QDialog(parent), m_panel(new ucLangProperties(services, std::move(showHelp), this)) {
    setObjectName(u"fmrLangProperties"_qs);
    setWindowTitle(tr("Organize Languages"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* close = buttons->button(QDialogButtonBox::Close);
    close->setObjectName(u"cmdClose"_qs);
    close->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_panel, 1);
    rows->addWidget(buttons);
}

int fmrLangProperties::exec() {
    m_panel->InitObjects(true);
    return QDialog::exec();
}
