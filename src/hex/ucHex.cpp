#include "hex/ucHex.h"

#include "hex/BookmarkList.h"
#include "hex/bytes/HexFindState.h"
#include "hex/grid/Grid.h"
#include "hex/grid/GridPane.h"
#include "hex/grid/OffsetPane.h"
#include "widgets/ClickLabel.h"

#include <QAction>
#include <QCoreApplication>
#include <QScrollBar>
#include <QToolBar>
#include <QWheelEvent>

ucHex::ucHex(Prompts& prompts, const Options& options, HexFindState& findState, QWidget* parent,
             const HexStorage& storage)
    : QWidget(parent),
      m_prompts(prompts),
      m_options(options),
      m_findState(findState),
      m_copy(storage.calls, storage.blockSize),
      m_bytes(m_copy),
      m_edits(m_copy),
      m_panes(this, m_copy, m_edits),
      m_typing(
          m_panes, [this](HexCell cell) { SaveData(cell.row, cell.col); }, [this](HexCell cell) { reportHalf(cell); }),
      m_editMode(m_panes.parts().info(HexInfo::HexMode), m_panes.parts().info(HexInfo::TextMode)),
      m_scans(this, m_bytes, m_panes, options, findState, [this](const QString& text) { Q_EMIT Notice(text); }) {
    connectPanes();
    connectParts();
    m_panes.setEnabled(false);
}

void ucHex::setEditObserver(HexEditObserver* observer) {
    m_observer = observer;
    m_edits.setObserver(observer);
    m_bytes.setObserver(observer);
}

int ucHex::rowHeight() const {
    return GridPane::RowHeight;
}

/// The connections of the panes end with m_panes: panes are destroyed after all that they would call.
void ucHex::connectPanes() {
    connect(&m_panes, &HexPanes::positionChanged, this, &ucHex::PositionChanged);
    connect(&m_panes, &HexPanes::firstPageRequested, this, &ucHex::MoveFirstPage);
    connect(&m_panes, &HexPanes::lastPageRequested, this, &ucHex::MoveLastPage);
    connect(&m_panes, &HexPanes::nextPageRequested, this, &ucHex::MoveNextPage);
    connect(&m_panes, &HexPanes::previousPageRequested, this, &ucHex::MovePreviousPage);
    connect(&m_panes, &HexPanes::nextLineRequested, this, &ucHex::MoveNextLine);
    connect(&m_panes, &HexPanes::previousLineRequested, this, &ucHex::MovePreviousLine);
    connect(&m_panes, &HexPanes::cellLeft, this, [this](int row, int col) {
        if (m_fileOpen)
            m_typing.finishNibble({row, col});
    });
    connect(m_panes.pane(1), &GridPane::focusLost, &m_panes, [this] { finishNibble(); });
    for (const int number : {1, 2})
        connectPane(number);
}

void ucHex::connectPane(int number) {
    const GridPane* const source = m_panes.pane(number);
    connect(source, &GridPane::keyPressed, &m_panes,
            [this](QKeyEvent* event, bool* taken) { *taken = HandleKey(*event); });
    connect(source, &GridPane::typed, &m_panes, [this, number](const QString& text, bool* taken) {
        if (refusesTyping())
            return;
        *taken = true;
        m_typing.type(number, text);
    });
    connect(source, &GridPane::wheelTurned, &m_panes, [this](int notches) { turnWheel(notches); });
    connect(source, &GridPane::rightReleased, &m_panes,
            [this, source](const QPoint& at) { requestContextMenu(source, at, u"HEX"_qs); });
}

void ucHex::connectParts() {
    const HexParts& parts = m_panes.parts();
    connect(parts.tbScroll, &QToolBar::actionTriggered, this, [this](const QAction* action) {
        if (m_fileOpen)
            QMetaObject::invokeMethod(this, action->data().toByteArray().constData(), Qt::DirectConnection);
    });
    connect(parts.VScroll1, &QScrollBar::valueChanged, this, &ucHex::SetOffsetPosition);
    connect(parts.lblSelect, &ClickLabel::clicked, this, &ucHex::toggleOffsetMode);
    connect(parts.PicOffSet, &OffsetPane::clicked, this, &ucHex::toggleOffsetMode);
    connect(parts.PicOffSet, &OffsetPane::wheelTurned, this,
            [this](QWheelEvent* event) { QCoreApplication::sendEvent(m_panes.pane(1), event); });
    for (const ClickLabel* label : parts.Label2)
        connect(label, &ClickLabel::clicked, this, &ucHex::toggleOffsetMode);
    for (const ClickLabel* label : parts.lblInfo)
        connect(label, &ClickLabel::clicked, this, &ucHex::toggleEditMode);
    connect(parts.lsBookmark, &BookmarkList::clicked, this, &ucHex::GotoSelectedBookmark);
    connect(parts.lsBookmark, &BookmarkList::activated, this, &ucHex::GotoSelectedBookmark);
    connect(parts.lsBookmark, &BookmarkList::menuWanted, this,
            [this](const QPoint& place) { requestContextMenu(this, mapFromGlobal(place), u"BOOK"_qs); });
}

void ucHex::requestContextMenu(const QWidget* from, const QPoint& at, const QString& key) {
    if (!m_fileOpen)
        return;
    const QPoint here = from->mapTo(this, at);
    Q_EMIT ContextMenuRequest(here.x(), here.y(), key);
}

void ucHex::focusInEvent(QFocusEvent* event) {
    GridPane* const pane = m_panes.activePane();
    if (pane->isEnabled())
        pane->setFocus(event->reason());
}

// The page

void ucHex::FillGrid() {
    if (m_fileOpen)
        m_panes.fill();
}

void ucHex::pageAfter(bool (HexPaging::*step)()) {
    finishNibble();
    if (m_fileOpen && (m_panes.paging().*step)())
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
    if (m_panes.turn(notches))
        FillGrid();
}

void ucHex::SetOffsetPosition() {
    if (m_panes.isScrolling() || !m_fileOpen)
        return;
    finishNibble();
    m_panes.paging().SetOffsetPosition(m_panes.parts().VScroll1->value());
    FillGrid();
}

void ucHex::SetScrollPosition() {
    m_panes.moveScrollBar();
}

void ucHex::gotoOffset(qint64 offset) {
    if (!m_fileOpen || offset >= FilePosition::Largest || offset < -FilePosition::Largest)
        return;
    finishNibble();
    const HexCell cell = m_panes.paging().goToTyped(Offset(offset));
    FillGrid();
    m_panes.selectInBoth(cell);
    m_panes.grid(1).Refresh();
    m_panes.focusPane(1);
}

void ucHex::gotoPage(qint64 page) {
    if (!m_fileOpen || page < 1 || page > FilePosition::Largest)
        return;
    finishNibble();
    m_panes.paging().goToPage(page);
    FillGrid();
    m_panes.selectInBoth({});
    m_panes.focusPane(1);
    m_panes.grid(1).Refresh();
}
