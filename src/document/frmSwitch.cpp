#include "document/frmSwitch.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int LeastWidth = 360;

}  // namespace

frmSwitch::frmSwitch(bool toText, QWidget* parent) : QDialog(parent) {
    setObjectName(u"frmSwitch"_qs);
    setWindowTitle(u"Quillmark"_qs);
    setModal(true);
    setMinimumWidth(LeastWidth);

    const QString mode = toText ? u"text"_qs : u"hex"_qs;
    const std::array captions{u"Save the file before switching to %1 mode."_qs.arg(mode),
                              u"Discard the changes and switch to %1 mode."_qs.arg(mode)};
    auto* layout = new QVBoxLayout(this);
    for (std::size_t i = 0; i < m_options.size(); ++i) {
        m_options[i] = new QRadioButton(captions[i], this);
        m_options[i]->setObjectName(u"Option1(%1)"_qs.arg(i));
        layout->addWidget(m_options[i]);
    }
    m_options[0]->setChecked(true);
    m_options[0]->setFocus();

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* go = buttons->addButton(u"&Switch"_qs, QDialogButtonBox::AcceptRole);
    go->setObjectName(u"cmdSwitch"_qs);
    go->setDefault(true);
    buttons->addButton(QDialogButtonBox::Cancel)->setObjectName(u"cmdCancel"_qs);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmSwitch::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmSwitch::reject);
    layout->addSpacing(layout->spacing());
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

bool frmSwitch::savesFirst() const {
    return m_options[0]->isChecked();
}

void frmSwitch::accept() {
    Result = true;
    QDialog::accept();
}

void frmSwitch::reject() {
    Result = false;
    QDialog::reject();
}
