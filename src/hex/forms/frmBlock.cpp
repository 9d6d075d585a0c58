#include "hex/forms/frmBlock.h"

#include "hex/forms/NumberConversion.h"
#include "widgets/Contrast.h"
#include "widgets/KeyFilterEdit.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr const char* ModeCaptions[] = {"Copi&ar para o Clipboard", "P&reencher com:", " Fill Blocks With "};
constexpr const char* FormCaptions[] = {"Hex Values", "C Source", "Pascal Source"};
constexpr qint64 NoOffset = -1;
const QColor Grey(0xC0, 0xC0, 0xC0);

Offset offsetOf(const QString& text) {
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return Offset(isNumber ? number : NoOffset);
}

bool isNumeric(const QString& text) {
    bool isNumber = false;
    text.toDouble(&isNumber);
    return isNumber;
}

QRadioButton* makeOption(const char* name, std::size_t index, const char* caption, QWidget* parent) {
    auto* option = new QRadioButton(QString::fromLatin1(caption), parent);
    option->setObjectName(u"%1(%2)"_qs.arg(QLatin1String(name)).arg(index));
    return option;
}

}  // namespace

frmBlock::frmBlock(bool locked, QWidget* parent)
    : HexDialog(u"frmBlock"_qs, u"Select Block"_qs, parent),
      m_first(new KeyFilterEdit(KeyFilterEdit::decimalKeys(), this)),
      m_last(new KeyFilterEdit(KeyFilterEdit::decimalKeys(), this)),
      m_byte(new KeyFilterEdit(KeyFilterEdit::hexKeys(), this)),
      m_fillFrame(new QGroupBox(this)) {
    m_first->setObjectName(u"Text1"_qs);
    m_last->setObjectName(u"Text2"_qs);
    m_byte->setObjectName(u"Text3"_qs);
    auto* modes = new QButtonGroup(this);
    for (std::size_t i = 0; i < m_mode.size(); ++i) {
        m_mode[i] = makeOption("Option1", i, ModeCaptions[i], i == 2 ? static_cast<QWidget*>(m_fillFrame) : this);
        modes->addButton(m_mode[i]);
        connect(m_mode[i], &QRadioButton::clicked, this, &frmBlock::applyMode);
    }
    auto* layout = new QFormLayout(this);
    layout->addRow(makeLabel(u"Label1(0)"_qs, u"First Offset (Dec):"_qs, m_first), m_first);
    layout->addRow(makeLabel(u"Label1(1)"_qs, u"Last Offset (Dec):"_qs, m_last), m_last);
    layout->addRow(m_mode[0]);
    layout->addRow(makeCopyFrame());
    layout->addRow(m_mode[1]);
    layout->addRow(makeFillFrame());
    layout->addRow(makeButtons());
    m_mode[0]->setChecked(true);
    m_mode[1]->setEnabled(!locked);
    applyMode();
    m_first->setFocus();
}

QWidget* frmBlock::makeFillFrame() {
    m_fillFrame->setObjectName(u"Frame1"_qs);
    auto* layout = new QFormLayout(m_fillFrame);
    layout->addRow(m_mode[2]);
    layout->addRow(u"Hex Value:"_qs, m_byte);
    return m_fillFrame;
}

QWidget* frmBlock::makeCopyFrame() {
    auto* frame = new QGroupBox(u"Copy Block to Clipboard"_qs, this);
    frame->setObjectName(u"Frame2"_qs);
    auto* layout = new QVBoxLayout(frame);
    for (std::size_t i = 0; i < m_form.size(); ++i) {
        m_form[i] = makeOption("Option2", i, FormCaptions[i], frame);
        layout->addWidget(m_form[i]);
    }
    m_form[0]->setChecked(true);
    return frame;
}

void frmBlock::applyMode() {
    const bool isFill = fills();
    for (QRadioButton* option : m_form)
        option->setEnabled(!isFill);
    m_fillFrame->setEnabled(isFill);
    m_byte->setEnabled(isFill);
    m_byte->setPalette(byteColours(isFill));
    if (isFill)
        m_byte->setFocus();
    else
        m_byte->clear();
}

/// Grey while nothing can be typed. In a dark window that grey would be the brightest spot: there the box has the
/// colour of the window.
QPalette frmBlock::byteColours(bool isFill) const {
    QPalette colours = palette();
    const QColor window = colours.color(QPalette::Window);
    if (!isFill)
        colours.setColor(QPalette::Base, Contrast::isDark(window) ? window : Grey);
    return colours;
}

bool frmBlock::checkInput() {
    const std::pair<KeyFilterEdit*, bool> missing[] = {{m_first, !isNumeric(m_first->text())},
                                                       {m_last, !isNumeric(m_last->text())},
                                                       {m_byte, fills() && m_byte->text().trimmed().isEmpty()}};
    for (const auto& [edit, isMissing] : missing) {
        if (isMissing) {
            edit->setFocus();
            return false;
        }
    }
    return true;
}

Offset frmBlock::first() const {
    return offsetOf(m_first->text());
}

Offset frmBlock::last() const {
    return offsetOf(m_last->text());
}

bool frmBlock::fills() const {
    return m_mode[1]->isChecked();
}

std::optional<quint8> frmBlock::fillByte() const {
    const std::optional<quint32> byte = NumberConversion::numberOfDigits(m_byte->text().trimmed(), 16);
    return byte && *byte <= 0xFF ? std::optional(static_cast<quint8>(*byte)) : std::nullopt;
}

BlockForm frmBlock::form() const {
    for (std::size_t i = 0; i < m_form.size(); ++i) {
        if (m_form[i]->isChecked())
            return static_cast<BlockForm>(i);
    }
    return BlockForm::HexValues;
}
