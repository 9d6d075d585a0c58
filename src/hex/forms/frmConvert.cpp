#include "hex/forms/frmConvert.h"

#include "hex/forms/NumberConversion.h"
#include "widgets/KeyFilterEdit.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace {

using namespace NumberConversion;

constexpr int MostDigits = 32;

QString unchanged(const QString& text) {
    return text;
}

/// One box: its name and allowed characters, and the conversions of its text from and to a decimal number.
struct Box {
    const char* label;
    const char* caption;
    const char* keys;
    QString (*fromDecimal)(const QString&);
    QString (*toDecimal)(const QString&);
};

constexpr Box Boxes[] = {
    {"Label1(1)", "&Decimal", "0123456789-", unchanged, unchanged},
    {"Label1(0)", "&Hex", "0123456789ABCDEF", DecToHex, HexToDec},
    {"Label1(2)", "&Binary", "01", DecToBin, cvBinToDec},
    {"Label1(3)", "&Octal", "01234567", DecToOct, OctToDec},
};

}  // namespace

frmConvert::frmConvert(QWidget* parent) : QDialog(parent) {
    setObjectName(u"frmConvert"_qs);
    setWindowTitle(u"Data Convertor"_qs);
    auto* layout = new QFormLayout(this);
    for (int i = 0; i < static_cast<int>(m_boxes.size()); ++i) {
        auto* box = new KeyFilterEdit(QString::fromLatin1(Boxes[i].keys), this);
        box->setObjectName(u"Text%1"_qs.arg(i + 1));
        box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QString(MostDigits + 1, u'0')));
        auto* label = new QLabel(QString::fromLatin1(Boxes[i].caption), this);
        label->setObjectName(QString::fromLatin1(Boxes[i].label));
        label->setBuddy(box);
        layout->addRow(label, box);
        connect(box, &KeyFilterEdit::focusGained, this, [this, box, i] {
            m_boxInUse = i + 1;
            box->selectAll();
        });
        connect(box, &QLineEdit::textChanged, this, [this, i] {
            if (m_boxInUse == i + 1)
                convertFrom(i);
        });
        m_boxes[static_cast<std::size_t>(i)] = box;
    }
    auto* close = new QPushButton(u"Close"_qs, this);
    close->setObjectName(u"Command1"_qs);
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    layout->addRow(QString(), close);
    layout->setAlignment(close, Qt::AlignRight);
    m_boxes[0]->setFocus();
}

void frmConvert::convertFrom(int box) {
    const QString decimal = Boxes[box].toDecimal(m_boxes[static_cast<std::size_t>(box)]->text());
    for (int i = 0; i < static_cast<int>(m_boxes.size()); ++i) {
        if (i != box)
            m_boxes[static_cast<std::size_t>(i)]->setText(Boxes[i].fromDecimal(decimal));
    }
}
