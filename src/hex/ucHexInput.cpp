// Keys of the view: typing, undo, and the other actions of keys.

#include "hex/bytes/HexEditObserver.h"
#include "hex/bytes/HexText.h"
#include "hex/grid/Grid.h"
#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"
#include "text/codec/Windows1252.h"
#include "widgets/Prompts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

bool ucHex::HandleKey(const QKeyEvent& event) {
    m_ctrlDown = (event.modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
    const bool isTab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
    if (isTab && m_fileOpen)
        m_panes.pane(ActiveGrid() == 1 ? 2 : 1)->setFocus(Qt::TabFocusReason);
    const bool isRepeat = event.key() == Qt::Key_F3;
    if (isRepeat)
        repeatSearch(QString());
    const bool isUndo = event.matches(QKeySequence::Undo);  // no entry of the menus has it, as the text control does
    if (isUndo && !m_locked)
        cmdUndo();
    return isTab || isRepeat || isUndo;
}

void ucHex::finishNibble() {
    if (m_fileOpen)
        m_typing.finishNibble(m_panes.grid(1).cell());
}

void ucHex::reportHalf(HexCell cell) {
    if (m_observer == nullptr)
        return;
    const int byte = HexText::HexCellToByte(m_panes.grid(1).Value(cell.row, cell.col));
    m_observer->halfTyped(FilePointer(), cell, static_cast<quint8>(byte));
}

void ucHex::SaveData(int row, int col) {
    const HexCell cell{row, col};
    if (!m_fileOpen || m_panes.paging().IsPastEnd(cell))
        return;
    const int byte = HexText::HexCellToByte(m_panes.grid(1).Value(row, col));
    if (const SystemError error = m_edits.overwrite(FilePointer(), cell, static_cast<quint8>(byte)))
        return refuseEdit(error);
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
    SystemError error;
    const std::optional<HexUndoEntry> entry = m_edits.takeBack(error);
    if (error)
        return refuseEdit(error);
    if (!entry)
        return;
    const auto [row, col] = entry->cell;
    if (entry->pointer != FilePointer()) {
        m_panes.paging().setFilePointer(entry->pointer);
        FillGrid();
    } else {
        m_panes.grid(1).setValue(row, col, HexText::ByteToHexCell(entry->value));
        m_panes.grid(2).setValue(row, col, HexText::ByteToTextCell(entry->value));
    }
    m_panes.activePane()->grid().SelectCell(row, col);
}

void ucHex::cmdCopy() {
    finishNibble();
    if (!m_fileOpen)
        return;
    const HexCell at = m_panes.grid(1).cell();
    const QString cell = m_panes.grid(1).Value(at.row, at.col);
    const auto byte = static_cast<quint8>(HexText::HexCellToByte(cell));
    QGuiApplication::clipboard()->setText(ActiveGrid() == 2 ? QString(QChar(Windows1252::characterOf(byte))) : cell);
}
