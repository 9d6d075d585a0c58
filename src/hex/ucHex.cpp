#include "hex/ucHex.h"

#include "hex/bytes/HexText.h"
#include "hex/grid/GridPane.h"
#include "hex/grid/HexMarker.h"
#include "hex/grid/OffsetPane.h"
#include "widgets/ClickLabel.h"

#include <QAction>
#include <QCoreApplication>
#include <QScrollBar>
#include <QToolBar>
#include <QTreeView>
#include <QWheelEvent>

#include <array>

namespace {

constexpr int LinesOfANotch = 3;
/// In a cell whose byte is there and can't be read.
const QString Unreadable = u"??"_qs;

}  // namespace

int ucHex::rowHeight() const {
    return GridPane::RowHeight;
}

ucHex::ucHex(Prompts& prompts, const Options& options, HexFindState& findState, QWidget* parent,
             const HexStorage& storage)
    : QWidget(parent),
      m_prompts(prompts),
      m_options(options),
      m_findState(findState),
      m_copy(storage.calls, storage.blockSize),
      m_parts(this, m_grid1, m_grid2) {
    m_grid1.setObjectName(u"grid1"_qs);
    m_grid2.setObjectName(u"grid2"_qs);
    for (const int number : {1, 2}) {
        grid(number).setParent(this);  // to be found by its name
        connectGrid(number);
        connectPane(number);
    }
    connectParts();
    setControlsEnabled(false);
    toggleEditMode();
}

/// The panes look at the grids to their end.
ucHex::~ucHex() {
    for (const int number : {1, 2}) {
        pane(number)->disconnect(this);
        delete pane(number);
        grid(number).setParent(nullptr);
    }
}

void ucHex::connectGrid(int number) {
    Grid* const source = &grid(number);
    connect(source, &Grid::EnterCell, this, [this, number](int row, int col) { enterCell(number, {row, col}); });
    connect(source, &Grid::RequestBOF, this, &ucHex::MoveFirstPage);
    connect(source, &Grid::RequestEOF, this, &ucHex::MoveLastPage);
    connect(source, &Grid::RequestNextPage, this, &ucHex::MoveNextPage);
    connect(source, &Grid::RequestPreviousPage, this, &ucHex::MovePreviousPage);
    connect(source, &Grid::RequestPreviousRow, this, [this] {
        if (FilePointer() > FilePosition(1))
            MovePreviousLine();
    });
    connect(source, &Grid::RequestNextRow, this, [this] {
        if (m_paging.hasNextRow())
            MoveNextLine();
    });
    if (number == 1) {
        connect(source, &Grid::LeaveCell, this, [this](int row, int col) {
            if (m_activeGrid == 1)
                finishNibble({row, col});
        });
    }
}

void ucHex::connectPane(int number) {
    GridPane* const source = pane(number);
    connect(source, &GridPane::keyPressed, this, [this](QKeyEvent* event, bool* taken) { *taken = HandleKey(*event); });
    connect(source, &GridPane::typed, this, [this, number](const QString& text, bool* taken) {
        if (refusesTyping())
            return;
        *taken = true;
        number == 1 ? typeHex(text) : typeText(text);
    });
    connect(source, &GridPane::focusGained, this, [this, number] { enterPane(number); });
    source->setMarks([this](HexCell cell) { return isChanged(cell); });
    connect(source, &GridPane::wheelTurned, this, &ucHex::turnWheel);
    connect(source, &GridPane::rightReleased, this,
            [this, source](const QPoint& at) { tellContextMenu(source, at, u"HEX"_qs); });
    if (number == 1)
        connect(source, &GridPane::focusLost, this, qOverload<>(&ucHex::finishNibble));
}

void ucHex::connectParts() {
    connect(m_parts.tbScroll, &QToolBar::actionTriggered, this, [this](const QAction* action) {
        if (m_fileOpen)
            QMetaObject::invokeMethod(this, action->data().toByteArray().constData(), Qt::DirectConnection);
    });
    connect(m_parts.VScroll1, &QScrollBar::valueChanged, this, &ucHex::SetOffsetPosition);
    connect(m_parts.lblSelect, &ClickLabel::clicked, this, &ucHex::toggleOffsetMode);
    connect(m_parts.PicOffSet, &OffsetPane::clicked, this, &ucHex::toggleOffsetMode);
    connect(m_parts.PicOffSet, &OffsetPane::wheelTurned, this,
            [this](QWheelEvent* event) { QCoreApplication::sendEvent(m_parts.PicHex, event); });
    for (const ClickLabel* label : m_parts.Label2)
        connect(label, &ClickLabel::clicked, this, &ucHex::toggleOffsetMode);
    for (const ClickLabel* label : m_parts.lblInfo) {
        connect(label, &ClickLabel::clicked, this, [this] {
            if (m_fileOpen)
                toggleEditMode();
        });
    }
    connect(m_parts.lsBookmark, &QTreeView::clicked, this, &ucHex::GotoSelectedBookmark);
    connect(m_parts.lsBookmark, &QTreeView::activated, this, &ucHex::GotoSelectedBookmark);
    m_parts.lsBookmark->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_parts.lsBookmark, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { tellContextMenu(m_parts.lsBookmark, at, u"BOOK"_qs); });
}

void ucHex::tellContextMenu(const QWidget* from, const QPoint& at, const QString& key) {
    if (!m_fileOpen)
        return;
    const QPoint here = from->mapTo(this, at);
    Q_EMIT ContextMenuRequest(here.x(), here.y(), key);
}

// The page

/// Does not yield: a page is brought to the screen in less time than the user could wait for, and a key that came in
/// between would find it half filled.
void ucHex::FillGrid() {
    if (!m_fileOpen)
        return;
    fillCells();
    PaintOffsets();
    m_scrollSync = true;
    SetScrollPosition();
    m_scrollSync = false;
    m_parts.info(HexInfo::Page)->setText(m_paging.PageCaption());
    m_grid1.Refresh();
    m_grid2.Refresh();  // does not follow the other one while it is in use itself
    showCell(m_grid1.cell());
    Q_EMIT PositionChanged();
}

void ucHex::fillCells() {
    const int rows = m_paging.rows();
    // One row more than is seen, as the grids have it.
    std::array<char, HexPaging::PageBytes + HexPaging::BytesPerRow> bytes{};
    const int shown = (rows + 1) * HexPaging::BytesPerRow;
    const qint64 count = m_copy.read(FilePointer(), bytes.data(), shown);
    for (const int number : {1, 2}) {
        pane(number)->beginFill();
        grid(number).setPointer(FilePointer());
        grid(number).setRows(rows);
    }
    for (int at = 0; at < shown; ++at) {
        const HexCell cell{at / HexPaging::BytesPerRow, at % HexPaging::BytesPerRow};
        const bool isRead = at < count;
        const int byte = isRead ? static_cast<quint8>(bytes[static_cast<std::size_t>(at)]) : HexText::NoByte;
        m_grid1.setValue(cell.row, cell.col, isRead ? HexText::ByteToHexCell(byte) : Unreadable);
        m_grid2.setValue(cell.row, cell.col, HexText::ByteToTextCell(byte));
    }
    for (const int number : {1, 2})
        pane(number)->endFill();
}

bool ucHex::isChanged(HexCell cell) const {
    const int byte = HexText::HexCellToByte(m_grid1.Value(cell.row, cell.col));
    return m_changes.isMarked(m_paging.positionOf(cell), static_cast<quint8>(byte));
}

void ucHex::forgetChanges() {
    m_changes.clear();
    for (const int number : {1, 2})
        pane(number)->update();
}

QStringList ucHex::offsetTexts(bool toEndOfFile) const {
    QStringList texts;
    for (int row = 0; row < m_grid1.Rows(); ++row) {
        if (toEndOfFile && m_paging.IsPastEnd({row, 0}))
            break;
        texts += HexText::FormatOffset(Offset(m_paging.positionOf({row, 0})), m_offsetHexMode);
    }
    return texts;
}

void ucHex::PaintOffsets() {
    m_parts.PicOffSet->setTexts(offsetTexts(true));
}

void ucHex::toggleOffsetMode() {
    if (!m_fileOpen)
        return;
    m_offsetHexMode = !m_offsetHexMode;
    m_parts.PicOffSet->setTexts(offsetTexts(false));
    m_parts.captionRuler(m_offsetHexMode);
}

void ucHex::pageAfter(bool (HexPaging::*step)()) {
    finishNibble();
    if (m_fileOpen && (m_paging.*step)())
        FillGrid();
}

void ucHex::MoveFirstPage() {
    pageAfter(&HexPaging::MoveFirstPage);
}

void ucHex::MovePreviousPage() {
    pageAfter(&HexPaging::MovePreviousPage);
}

void ucHex::MovePreviousLine() {
    pageAfter(&HexPaging::MovePreviousLine);
}

void ucHex::MoveNextLine() {
    pageAfter(&HexPaging::MoveNextLine);
}

void ucHex::MoveNextPage() {
    pageAfter(&HexPaging::MoveNextPage);
}

void ucHex::MoveLastPage() {
    pageAfter(&HexPaging::MoveLastPage);
}

void ucHex::turnWheel(int notches) {
    if (!m_fileOpen)
        return;
    finishNibble();
    const FilePosition before = FilePointer();
    for (int line = 0; line < qAbs(notches) * LinesOfANotch; ++line) {
        if (notches > 0)
            m_paging.MovePreviousLine();
        else
            m_paging.MoveNextLine();
    }
    if (FilePointer() != before)
        FillGrid();
}

void ucHex::SetOffsetPosition() {
    if (m_scrollSync || !m_fileOpen)
        return;
    finishNibble();
    m_paging.SetOffsetPosition(m_parts.VScroll1->value());
    FillGrid();
}

void ucHex::SetScrollPosition() {
    if (m_parts.VScroll1->isEnabled())
        m_parts.VScroll1->setValue(m_paging.scrollPosition());
}

QString ucHex::GetCursorPos() const {
    return u"Pg %1, Pos %2/%3"_qs.arg(m_paging.PageCaption(), m_parts.info(HexInfo::OffsetDec)->text(),
                                      QString::number(m_paging.length() - 1));
}

// The cursor

void ucHex::showCell(HexCell cell) {
    const QString text = m_grid1.Value(cell.row, cell.col);
    const qint64 offset = Offset(m_paging.positionOf(cell)).number();
    m_parts.moveMarkers(cell.row, cell.col);
    m_parts.info(HexInfo::ByteHex)->setText(text);
    m_parts.info(HexInfo::ByteDec)->setText(QString::number(HexText::HexCellToByte(text)));
    m_parts.info(HexInfo::OffsetHex)->setText(QString::number(offset, 16).toUpper());
    m_parts.info(HexInfo::OffsetDec)->setText(QString::number(offset));
}

/// Only the grid in use leads the other one.
void ucHex::enterCell(int number, HexCell cell) {
    if (m_activeGrid != number)
        return;
    showCell(cell);
    grid(number == 1 ? 2 : 1).SelectCell(cell.row, cell.col);
    Q_EMIT PositionChanged();
}

void ucHex::enterPane(int number) {
    m_activeGrid = number;
    grid(number).SelectCell(grid(number).Row(), grid(number).Col());
    pane(1)->setBorder(number == 1);
    pane(2)->setBorder(number == 2);
    Q_EMIT PositionChanged();
}

void ucHex::usePane(int number) {
    pane(number)->setFocus();
    if (m_activeGrid != number)
        enterPane(number);
}
