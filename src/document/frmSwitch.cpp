#include "document/frmSwitch.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int leastWidth = 360;

}  // namespace

frmSwitch::frmSwitch(bool toText, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmSwitch"));
    setWindowTitle(QStringLiteral("Quillmark"));
    setModal(true);
    setMinimumWidth(leastWidth);

    const QString mode = toText ? QStringLiteral("text") : QStringLiteral("hex");
    const std::array captions{QStringLiteral("Save the file before switching to %1 mode.").arg(mode),
                              QStringLiteral("Discard the changes and switch to %1 mode.").arg(mode)};
    auto* layout = new QVBoxLayout(this);
    for (std::size_t i = 0; i < m_options.size(); ++i) {
        m_options[i] = new QRadioButton(captions[i], this);
        m_options[i]->setObjectName(QStringLiteral("Option1(%1)").arg(i));
        layout->addWidget(m_options[i]);
    }
    m_options[0]->setChecked(true);
    m_options[0]->setFocus();

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* go = buttons->addButton(QStringLiteral("&Switch"), QDialogButtonBox::AcceptRole);
    go->setObjectName(QStringLiteral("cmdSwitch"));
    go->setDefault(true);
    buttons->addButton(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
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
