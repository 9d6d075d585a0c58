#include "properties/fmrLangProperties.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

fmrLangProperties::fmrLangProperties(const DocumentServices& services, ucLangProperties::ShowHelp showHelp,
                                     QWidget* parent)
    : QDialog(parent), m_panel(new ucLangProperties(services, std::move(showHelp), this)) {
    setObjectName(QStringLiteral("fmrLangProperties"));
    setWindowTitle(tr("Organize Languages"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* close = buttons->button(QDialogButtonBox::Close);
    close->setObjectName(QStringLiteral("cmdClose"));
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
