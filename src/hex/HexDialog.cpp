#include "hex/HexDialog.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace {

constexpr int NarrowestForm = 280;  ///< pixels in which the caption can be read

}  // namespace

HexDialog::HexDialog(const QString& name, const QString& caption, QWidget* parent) : QDialog(parent) {
    setObjectName(name);
    setWindowTitle(caption);
    setModal(true);
    setMinimumWidth(NarrowestForm);
}

QWidget* HexDialog::makeButtons() {
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->addStretch();
    auto* ok = new QPushButton(QStringLiteral("OK"), row);
    ok->setObjectName(QStringLiteral("Command1"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &HexDialog::accept);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), row);
    cancel->setObjectName(QStringLiteral("Command2"));
    connect(cancel, &QPushButton::clicked, this, &HexDialog::reject);
    layout->addWidget(ok);
    layout->addWidget(cancel);
    return row;
}

void HexDialog::accept() {
    if (!checkInput())
        return;
    m_tag = QStringLiteral("OK");
    QDialog::accept();
}

void HexDialog::reject() {
    m_tag = QStringLiteral("CANCEL");
    QDialog::reject();
}
