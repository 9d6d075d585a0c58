// Keys of the view: what they do to a byte, how that is taken back, and what else they reach.

#include "hex/bytes/HexText.h"
#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"
#include "settings/Colour.h"
#include "text/codec/Windows1252.h"
#include "widgets/ClickLabel.h"
#include "widgets/Contrast.h"
#include "widgets/Prompts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

#include <cerrno>

namespace {

constexpr qint32 ModeInUse = 255;
constexpr qint32 OtherMode = 16384;

QColor colourOf(qint32 number) {
    const Colour colour = Colour::fromNumber(number);
    return {colour.red, colour.green, colour.blue};
}

/// The two colours are fixed, so on a dark window they stand on a light ground.
void paintMode(QWidget* label, qint32 number) {
    const QColor window = label->parentWidget()->palette().color(QPalette::Window);
    const bool isTooDark = Contrast::between(colourOf(OtherMode), window) < Contrast::Enough;
    QPalette palette;
    palette.setColor(QPalette::WindowText, colourOf(number));
    if (isTooDark)
        palette.setColor(QPalette::Window, Qt::white);
    label->setAutoFillBackground(isTooDark);
    label->setPalette(palette);
}

}  // namespace

bool ucHex::HandleKey(const QKeyEvent& event) {
    m_ctrlDown = (event.modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
    const bool isTab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
    if (isTab && m_fileOpen)
        pane(m_activeGrid == 1 ? 2 : 1)->setFocus(Qt::TabFocusReason);
    const bool isRepeat = event.key() == Qt::Key_F3;
    if (isRepeat)
        repeatSearch(QString());
    const bool isUndo = event.matches(QKeySequence::Undo);  // no entry of the menus has it, as the text control does
    if (isUndo && !m_locked)
        cmdUndo();
    return isTab || isRepeat || isUndo;
}

void ucHex::typeHex(const QString& text) {
    for (const QChar character : text) {
        if (character == u'\r')
            finishNibble();
        else if (HexText::nibbleOf(character) >= 0)
            typeNibble(character.toUpper());
    }
}

void ucHex::typeNibble(QChar digit) {
    const HexCell cell = m_grid1.cell();
    if (m_paging.IsPastEnd(cell))
        return;
    const QString before = m_grid1.Value(cell.row, cell.col);
    const bool isSecond = before.size() == 1;
    const QString after = isSecond ? before + digit : QString(digit);
    m_grid1.setValue(cell.row, cell.col, after);
    m_grid2.setValue(cell.row, cell.col, HexText::ByteToTextCell(HexText::HexCellToByte(after)));
    if (isSecond)
        SaveData(cell.row, cell.col);
    showCell(cell);
}

void ucHex::typeText(const QString& text) {
    for (const QChar character : text) {
        const int byte = Windows1252::byteOf(character.unicode());
        const HexCell cell = m_grid2.cell();
        if (byte <= 0 || m_paging.IsPastEnd(cell))
            continue;
        m_grid2.setValue(cell.row, cell.col, HexText::ByteToTextCell(byte));
        m_grid1.setValue(cell.row, cell.col, HexText::ByteToHexCell(byte));
        SaveData(cell.row, cell.col);
        showCell(cell);
    }
}

void ucHex::finishNibble() {
    finishNibble(m_grid1.cell());
}

void ucHex::finishNibble(HexCell cell) {
    const QString text = m_grid1.Value(cell.row, cell.col);
    if (!m_fileOpen || text.size() != 1)
        return;
    m_grid1.setValue(cell.row, cell.col, u'0' + text);
    SaveData(cell.row, cell.col);
    if (cell == m_grid1.cell())
        showCell(cell);
}

void ucHex::SaveData(int row, int col) {
    const HexCell cell{row, col};
    if (!m_fileOpen || m_paging.IsPastEnd(cell))
        return;
    const FilePosition position = m_paging.positionOf(cell);
    const char now = static_cast<char>(HexText::HexCellToByte(m_grid1.Value(row, col)));
    char before = 0;
    if (m_copy.read(position, &before, 1) != 1)
        return refuseEdit(SystemError::fromErrno(EIO));
    if (const SystemError error = m_copy.write(position, {&now, 1}))
        return refuseEdit(error);
    m_undoLog.add({FilePointer(), cell, static_cast<quint8>(before)});
    m_changes.type(position, static_cast<quint8>(before), static_cast<quint8>(now));
    m_modified = true;
    Q_EMIT DataChanged();
}

void ucHex::refuseEdit(const SystemError& error) {
    FillGrid();
    QMetaObject::invokeMethod(
        this, [this, why = error.description] { m_prompts.message(this, why); }, Qt::QueuedConnection);
}

void ucHex::cmdUndo() {
    finishNibble();
    if (m_fileOpen)
        DoUndos();
}

void ucHex::DoUndos() {
    const std::optional<HexUndoEntry> entry = m_undoLog.take();
    if (!entry)
        return;
    const auto [row, col] = entry->cell;
    const char byte = static_cast<char>(entry->value);
    const FilePosition position = entry->pointer + row * HexPaging::BytesPerRow + col;
    if (const SystemError error = m_copy.write(position, {&byte, 1})) {
        m_undoLog.add(*entry);
        return refuseEdit(error);
    }
    m_changes.restore(position, entry->value);
    if (entry->pointer != FilePointer()) {
        m_paging.setFilePointer(entry->pointer);
        FillGrid();
    } else {
        m_grid1.setValue(row, col, HexText::ByteToHexCell(entry->value));
        m_grid2.setValue(row, col, HexText::ByteToTextCell(entry->value));
    }
    grid(m_activeGrid == 1 ? 1 : 2).SelectCell(row, col);
}

void ucHex::cmdCopy() {
    finishNibble();
    if (!m_fileOpen)
        return;
    const QString cell = m_grid1.Value(m_grid1.Row(), m_grid1.Col());
    const auto byte = static_cast<quint8>(HexText::HexCellToByte(cell));
    QGuiApplication::clipboard()->setText(m_activeGrid == 2 ? QString(QChar(Windows1252::characterOf(byte))) : cell);
}

void ucHex::paintEditMode(bool isHex) {
    paintMode(m_parts.info(HexInfo::HexMode), isHex ? ModeInUse : OtherMode);
    paintMode(m_parts.info(HexInfo::TextMode), isHex ? OtherMode : ModeInUse);
}

void ucHex::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    const QColor colour = m_parts.info(HexInfo::HexMode)->palette().color(QPalette::WindowText);
    paintEditMode(colour == colourOf(ModeInUse));
}

void ucHex::focusInEvent(QFocusEvent* event) {
    if (activePane()->isEnabled())
        activePane()->setFocus(event->reason());
}

void ucHex::toggleEditMode() {
    ClickLabel* const hexLabel = m_parts.info(HexInfo::HexMode);
    const bool toHex = hexLabel->palette().color(QPalette::WindowText) != colourOf(ModeInUse);
    paintEditMode(toHex);
    if (pane(toHex ? 1 : 2)->isEnabled())
        pane(toHex ? 1 : 2)->setFocus();
}
