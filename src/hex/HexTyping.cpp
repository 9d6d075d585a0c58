#include "hex/HexTyping.h"

#include "hex/HexPanes.h"
#include "hex/bytes/HexText.h"
#include "hex/grid/Grid.h"
#include "text/codec/Windows1252.h"

#include <utility>

HexTyping::HexTyping(HexPanes& panes, Save save, Begun begun)
    : m_panes(panes), m_save(std::move(save)), m_begun(std::move(begun)) {}

void HexTyping::type(int pane, const QString& text) {
    if (pane == 1)
        typeHex(text);
    else
        typeText(text);
}

void HexTyping::typeHex(const QString& text) {
    for (const QChar character : text) {
        if (character == u'\r')
            finishNibble(m_panes.grid(1).cell());
        else if (HexText::nibbleOf(character) >= 0)
            typeNibble(character.toUpper());
    }
}

void HexTyping::typeNibble(QChar digit) {
    Grid& digits = m_panes.grid(1);
    const HexCell cell = digits.cell();
    if (m_panes.paging().IsPastEnd(cell))
        return;
    const QString before = digits.Value(cell.row, cell.col);
    const bool isSecond = before.size() == 1;
    const QString after = isSecond ? before + digit : QString(digit);
    digits.setValue(cell.row, cell.col, after);
    m_panes.grid(2).setValue(cell.row, cell.col, HexText::ByteToTextCell(HexText::HexCellToByte(after)));
    if (isSecond)
        m_save(cell);
    else
        m_begun(cell);
    m_panes.showCell(cell);
}

void HexTyping::typeText(const QString& text) {
    Grid& characters = m_panes.grid(2);
    for (const QChar character : text) {
        const int byte = Windows1252::byteOf(character.unicode());
        const HexCell cell = characters.cell();
        if (byte <= 0 || m_panes.paging().IsPastEnd(cell))
            continue;
        characters.setValue(cell.row, cell.col, HexText::ByteToTextCell(byte));
        m_panes.grid(1).setValue(cell.row, cell.col, HexText::ByteToHexCell(byte));
        m_save(cell);
        m_panes.showCell(cell);
    }
}

void HexTyping::finishNibble(HexCell cell) {
    Grid& digits = m_panes.grid(1);
    const QString text = digits.Value(cell.row, cell.col);
    if (text.size() != 1)
        return;
    digits.setValue(cell.row, cell.col, u'0' + text);
    m_save(cell);
    if (cell == digits.cell())
        m_panes.showCell(cell);
}
