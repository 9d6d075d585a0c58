#include "properties/frmMacro.h"

#include "keys/MacroStore.h"
#include "properties/ucMarco.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

frmMacro::frmMacro(const MacroPanelServices& services, QWidget* parent)
    : QDialog(parent), m_macros(services.macros), m_panel(new ucMarco(services, this)) {
    setObjectName(u"frmMacro"_qs);
    setWindowTitle(u"Organize Marco"_qs);
    auto* close = new QPushButton(tr("&Close"));
    close->setObjectName(u"cmdClose"_qs);
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_panel, 1);
    layout->addLayout(buttons);
}

void frmMacro::done(int result) {
    m_macros.SaveMacros();
    QDialog::done(result);
}
