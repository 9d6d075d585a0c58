#include "hex/HexPanes.h"

#include "hex/bytes/ByteStore.h"
#include "hex/bytes/HexEdits.h"
#include "hex/bytes/HexText.h"
#include "hex/grid/Grid.h"
#include "hex/grid/GridPane.h"
#include "hex/grid/HexMarker.h"
#include "hex/grid/OffsetPane.h"
#include "widgets/ClickLabel.h"

#include <QScrollBar>

#include <array>

namespace {

constexpr int LinesOfANotch = 3;
/// In a cell whose byte is there and can't be read.
const QString Unreadable = u"??"_qs;

}  // namespace

HexPanes::HexPanes(QWidget* view, const ByteStore& bytes, const HexEdits& edits)
    : m_view(view),
      m_bytes(bytes),
      m_edits(edits),
      m_grid1(new Grid(view)),
      m_grid2(new Grid(view)),
      m_parts(view, *m_grid1, *m_grid2) {
    m_grid1->setObjectName(u"grid1"_qs);
    m_grid2->setObjectName(u"grid2"_qs);
    for (const int number : {1, 2}) {
        grid(number).setParent(pane(number));  // a pane uses its grid until it is destroyed
        connectGrid(number);
        connect(pane(number), &GridPane::focusGained, this, [this, number] { enterPane(number); });
        pane(number)->setMarks([this](HexCell cell) { return isChanged(cell); });
        pane(number)->setMatches([this](HexCell cell) { return isFound(cell); });
    }
}

void HexPanes::connectGrid(int number) {
    const Grid* const source = &grid(number);
    connect(source, &Grid::EnterCell, this, [this, number](int row, int col) { enterCell(number, {row, col}); });
    connect(source, &Grid::RequestBOF, this, &HexPanes::firstPageRequested);
    connect(source, &Grid::RequestEOF, this, &HexPanes::lastPageRequested);
    connect(source, &Grid::RequestNextPage, this, &HexPanes::nextPageRequested);
    connect(source, &Grid::RequestPreviousPage, this, &HexPanes::previousPageRequested);
    connect(source, &Grid::RequestPreviousRow, this, [this] {
        if (m_paging.FilePointer() > FilePosition(1))
            Q_EMIT previousLineRequested();
    });
    connect(source, &Grid::RequestNextRow, this, [this] {
        if (m_paging.hasNextRow())
            Q_EMIT nextLineRequested();
    });
    if (number == 1) {
        connect(source, &Grid::LeaveCell, this, [this](int row, int col) {
            if (m_activeNumber == 1)
                Q_EMIT cellLeft(row, col);
        });
    }
}

void HexPanes::open(qint64 length) {
    m_paging.open(length);
    m_match.reset();
    for (const int number : {1, 2})
        grid(number).setMax(length);
    m_scrollSync = true;
    m_parts.VScroll1->setValue(0);
    m_scrollSync = false;
    m_parts.VScroll1->setEnabled(m_paging.scrolls());
    m_parts.info(HexInfo::FileSize)->setText(QString::number(length));
    m_parts.info(HexInfo::PageBytes)->setText(QString::number(HexPaging::PageBytes));
}

void HexPanes::setEnabled(bool isEnabled) {
    for (const int number : {1, 2}) {
        pane(number)->setEnabled(isEnabled);
        pane(number)->setCursorShown(isEnabled);
    }
    m_parts.VScroll1->setEnabled(isEnabled && m_paging.scrolls());
    m_parts.setScrollButtonsEnabled(isEnabled);
    for (HexMarker* sign : m_parts.Sign)
        sign->setVisible(isEnabled);
    m_parts.lblSelect->setVisible(isEnabled);
}

// The page

void HexPanes::fill() {
    fillCells();
    m_parts.PicOffSet->setTexts(offsetTexts(true));
    m_scrollSync = true;
    moveScrollBar();
    m_scrollSync = false;
    m_parts.info(HexInfo::Page)->setText(m_paging.PageCaption());
    m_grid1->Refresh();
    m_grid2->Refresh();  // does not follow the other one while it is in use itself
    showCell(m_grid1->cell());
    Q_EMIT positionChanged();
}

void HexPanes::fillCells() {
    const int rows = m_paging.rows();
    const FilePosition top = m_paging.FilePointer();
    // One row more than is visible, as in the grids.
    std::array<char, HexPaging::PageBytes + HexPaging::BytesPerRow> bytes{};
    const int shown = (rows + 1) * HexPaging::BytesPerRow;
    const qint64 count = m_bytes.read(top, bytes.data(), shown);
    for (const int number : {1, 2}) {
        pane(number)->beginFill();
        grid(number).setPointer(top);
        grid(number).setRows(rows);
    }
    for (int at = 0; at < shown; ++at) {
        const HexCell cell{at / HexPaging::BytesPerRow, at % HexPaging::BytesPerRow};
        const bool isRead = at < count;
        const int byte = isRead ? static_cast<quint8>(bytes[static_cast<std::size_t>(at)]) : HexText::NoByte;
        m_grid1->setValue(cell.row, cell.col, isRead ? HexText::ByteToHexCell(byte) : Unreadable);
        m_grid2->setValue(cell.row, cell.col, HexText::ByteToTextCell(byte));
    }
    for (const int number : {1, 2})
        pane(number)->endFill();
}

bool HexPanes::isChanged(HexCell cell) const {
    const int byte = HexText::HexCellToByte(m_grid1->Value(cell.row, cell.col));
    return m_edits.isChanged(m_paging.positionOf(cell), static_cast<quint8>(byte));
}

bool HexPanes::isFound(HexCell cell) const {
    const FilePosition position = m_paging.positionOf(cell);
    return m_match && m_match->first <= position && position <= m_match->last;
}

void HexPanes::forgetMatchUnlessAt(HexCell cell) {
    if (!m_match || isFound(cell))
        return;
    m_match.reset();
    paintMarks();
}

void HexPanes::showMatch(const HexBlock& match) {
    const HexCell cell = m_paging.goTo(Offset(match.first));
    m_match.reset();
    fill();
    selectInBoth(cell);
    m_match = match;
    paintMarks();
}

void HexPanes::paintMarks() {
    for (const int number : {1, 2})
        pane(number)->update();
}

QStringList HexPanes::offsetTexts(bool toEndOfFile) const {
    QStringList texts;
    for (int row = 0; row < m_grid1->Rows(); ++row) {
        if (toEndOfFile && m_paging.IsPastEnd({row, 0}))
            break;
        texts += HexText::FormatOffset(Offset(m_paging.positionOf({row, 0})), m_offsetHexMode);
    }
    return texts;
}

void HexPanes::toggleOffsets() {
    m_offsetHexMode = !m_offsetHexMode;
    m_parts.PicOffSet->setTexts(offsetTexts(false));
    m_parts.captionRuler(m_offsetHexMode);
}

void HexPanes::moveScrollBar() {
    if (m_parts.VScroll1->isEnabled())
        m_parts.VScroll1->setValue(m_paging.scrollPosition());
}

bool HexPanes::turn(int notches) {
    const FilePosition before = m_paging.FilePointer();
    for (int line = 0; line < qAbs(notches) * LinesOfANotch; ++line) {
        if (notches > 0)
            m_paging.MovePreviousLine();
        else
            m_paging.MoveNextLine();
    }
    return m_paging.FilePointer() != before;
}

// The cursor

void HexPanes::showCell(HexCell cell) {
    const QString text = m_grid1->Value(cell.row, cell.col);
    const Offset offset(m_paging.positionOf(cell));
    m_shown = cell;
    m_parts.moveMarkers(cell.row, cell.col);
    m_parts.info(HexInfo::ByteHex)->setText(text);
    m_parts.info(HexInfo::ByteDec)->setText(QString::number(HexText::HexCellToByte(text)));
    m_parts.info(HexInfo::OffsetHex)->setText(HexText::hexOf(offset));
    m_parts.info(HexInfo::OffsetDec)->setText(QString::number(offset.number()));
}

void HexPanes::selectInBoth(HexCell cell) {
    m_grid1->SelectCell(cell.row, cell.col);
    m_grid2->SelectCell(cell.row, cell.col);
    showCell(m_grid1->cell());
}

/// Only the grid in use leads the other one.
void HexPanes::enterCell(int number, HexCell cell) {
    if (m_activeNumber != number)
        return;
    forgetMatchUnlessAt(cell);
    showCell(cell);
    grid(number == 1 ? 2 : 1).SelectCell(cell.row, cell.col);
    Q_EMIT positionChanged();
}

void HexPanes::enterPane(int number) {
    m_activeNumber = number;
    grid(number).SelectCell(grid(number).Row(), grid(number).Col());
    pane(1)->setBorder(number == 1);
    pane(2)->setBorder(number == 2);
    Q_EMIT positionChanged();
}

void HexPanes::focusPane(int number) {
    if (m_view->isVisible())
        pane(number)->setFocus();
}

void HexPanes::usePane(int number) {
    focusPane(number);
    if (m_activeNumber != number)
        enterPane(number);
}

QString HexPanes::cursorText() const {
    return u"Pg %1, Pos %2/%3"_qs.arg(m_paging.PageCaption(),
                                      QString::number(Offset(m_paging.positionOf(m_shown)).number()),
                                      QString::number(m_paging.length() - 1));
}

QRect HexPanes::cursorRect() const {
    const GridPane* const pane = activePane();
    const QRect cell = pane->cellRect(pane->grid().cell());
    return {pane->mapTo(m_view, cell.topLeft()), cell.size()};
}
