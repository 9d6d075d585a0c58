#include "hex/forms/HexDialog.h"

#include <QHBoxLayout>
#include <QLabel>
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
    auto* ok = new QPushButton(u"OK"_qs, row);
    ok->setObjectName(u"Command1"_qs);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &HexDialog::accept);
    auto* cancel = new QPushButton(u"Cancel"_qs, row);
    cancel->setObjectName(u"Command2"_qs);
    connect(cancel, &QPushButton::clicked, this, &HexDialog::reject);
    layout->addWidget(ok);
    layout->addWidget(cancel);
    return row;
}

QLabel* HexDialog::makeLabel(const QString& name, const QString& caption, QWidget* box) {
    auto* label = new QLabel(caption, this);
    label->setObjectName(name);
    label->setBuddy(box);
    if (m_firstLabel == nullptr)
        m_firstLabel = label;
    return label;
}

void HexDialog::setTag(const QString& tag) {
    m_tag = tag;
    if (m_firstLabel != nullptr)
        m_firstLabel->setProperty("Tag", tag);
}

void HexDialog::accept() {
    if (!checkInput())
        return;
    setTag(u"OK"_qs);
    QDialog::accept();
}

void HexDialog::reject() {
    setTag(u"CANCEL"_qs);
    QDialog::reject();
}
