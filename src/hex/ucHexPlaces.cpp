// Where the view goes: matches, bookmarks, offsets, pages, blocks.

#include "hex/bytes/HexSearch.h"
#include "hex/bytes/HexText.h"
#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"
#include "settings/Options.h"
#include "widgets/BusyPointer.h"
#include "widgets/Prompts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTreeView>

#include <cerrno>
#include <limits>

namespace {

constexpr int NotFound = -1;
/// Its text is a dozen times as long in memory.
constexpr qint64 MostCopied = 256 * 1024 * 1024;
constexpr qint64 LastPosition = std::numeric_limits<qint32>::max();

QString hexOf(Offset offset) {
    return QString::number(offset.number(), 16).toUpper();
}

}  // namespace

// Search

int ucHex::FindDown(const QString& pStr, qint16 pFindType) {
    return search(pStr, static_cast<HexFindType>(pFindType), HexFindDirection::Down);
}

int ucHex::FindUp(const QString& pStr, qint16 pFindType) {
    return search(pStr, static_cast<HexFindType>(pFindType), HexFindDirection::Up);
}

int ucHex::search(const QString& text, HexFindType type, HexFindDirection direction) {
    if (!m_fileOpen)
        return NotFound;
    finishNibble();
    const bool isDown = direction == HexFindDirection::Down;
    const FilePosition cursor = m_paging.positionOf(m_grid1.cell());
    int result = NotFound;
    if (!isDown || cursor.number() < m_copy.length()) {
        m_findState.LastFindText = text;
        m_findState.LastFindType = type;
        m_findState.LastFindDirection = direction;
        usePane(type == HexFindType::Bytes ? 1 : 2);
        const HexSearch bytes(m_copy);
        std::optional<FilePosition> match;
        if (const std::optional<HexNeedle> needle = HexNeedle::make(text, type)) {
            match = isDown ? bytes.findDown(*needle, cursor + 1, m_options.ContinueSearch)
                           : bytes.findUp(*needle, cursor, m_options.ContinueSearch);
        }
        if (match)
            result = showMatch(*match);
    }
    Q_EMIT SearchDone(text, static_cast<qint16>(type));
    return result;
}

int ucHex::showMatch(FilePosition match) {
    const HexCell cell = m_paging.goTo(Offset(match));
    FillGrid();
    m_grid2.Refresh();
    selectInBoth(cell);
    return static_cast<int>(match.number());
}

void ucHex::selectInBoth(HexCell cell) {
    m_grid1.SelectCell(cell.row, cell.col);
    m_grid2.SelectCell(cell.row, cell.col);
    showCell(m_grid1.cell());
}

bool ucHex::FindNextStr(const QString& text) {
    return searchFromBar(text, HexFindDirection::Down);
}

bool ucHex::FindPrevStr(const QString& text) {
    return searchFromBar(text, HexFindDirection::Up);
}

bool ucHex::searchFromBar(const QString& text, HexFindDirection direction) {
    if (text.isEmpty())
        return search(m_findState.LastFindText, m_findState.LastFindType, direction) != NotFound;
    HexFindType type = HexFindType::Bytes;
    if (m_activeGrid == 2)
        type = m_options.CaseSensitiveOn ? HexFindType::ExactCase : HexFindType::AnyCase;
    return search(text, type, direction) != NotFound;
}

void ucHex::FindNextItem() {
    repeatSearch(u"Not Found"_qs);
}

void ucHex::repeatSearch(const QString& notFound) {
    if (!m_findState.HexFindActive || !m_fileOpen)
        return;
    BusyPointer::show();
    const QString text = m_findState.LastFindText;
    const bool found = search(text, m_findState.LastFindType, m_findState.LastFindDirection) != NotFound;
    BusyPointer::restore();
    if (!found)
        m_prompts.message(this, notFound);
}

int ucHex::CountBytes(const QString& pStr, qint16 pFindType) {
    finishNibble();
    const std::optional<HexNeedle> needle = HexNeedle::make(pStr, static_cast<HexFindType>(pFindType));
    return m_fileOpen && needle ? static_cast<int>(HexSearch(m_copy).count(*needle)) : 0;
}

int ucHex::MarkAll(const QString& pStr, qint16 pFindType) {
    finishNibble();
    const std::optional<HexNeedle> needle = HexNeedle::make(pStr, static_cast<HexFindType>(pFindType));
    if (!m_fileOpen || !needle)
        return 0;
    const int before = m_parts.bookmarks->count();
    const qint64 matches = HexSearch(m_copy).forEachMatch(*needle, [this](FilePosition match) {
        m_parts.bookmarks->add(hexOf(Offset(match)), QString::number(Offset(match).number()));
    });
    if (m_parts.bookmarks->count() > before)
        selectBookmark(m_parts.bookmarks->count() - 1);
    return static_cast<int>(matches);
}

int ucHex::ReplaceAll(const QString& pFind, const QString& pReplace, qint16 pFindType) {
    finishNibble();
    const std::optional<HexNeedle> needle = HexNeedle::make(pFind, static_cast<HexFindType>(pFindType));
    const std::optional<QByteArray> replacement = HexText::bytesOfHexText(pReplace);
    if (!m_fileOpen || !needle || !replacement)
        return 0;
    const HexSearch::Replaced replaced = HexSearch(m_copy).replaceAll(*needle, *replacement);
    FillGrid();
    if (replaced.error)
        m_prompts.message(this, replaced.error.description);
    return static_cast<int>(replaced.matches);
}

void ucHex::ReplaceBytes(const QString& pHexText, int position) {
    finishNibble();
    const std::optional<QByteArray> bytes = HexText::bytesOfHexText(pHexText);
    if (!m_fileOpen || !bytes || position < 1)
        return;
    const std::string_view text(bytes->constData(), static_cast<std::size_t>(bytes->size()));
    if (const SystemError error = m_copy.write(FilePosition(position), text))
        m_prompts.message(this, error.description);
}

// Bookmarks

void ucHex::AddBookMark(const QString& hexText, const QString& decimalText, bool silent) {
    if (!m_fileOpen)
        return;
    if (m_parts.bookmarks->add(hexText, decimalText))
        selectBookmark(m_parts.bookmarks->count() - 1);
    else if (!silent)
        m_prompts.message(this, u"Bookmark already exists!"_qs);
}

void ucHex::cmdBookmark() {
    finishNibble();
    const Offset offset(m_paging.positionOf(m_grid1.cell()));
    AddBookMark(hexOf(offset), QString::number(offset.number()), false);
    activePane()->setFocus();
}

void ucHex::cmdBookmark_old() {
    cmdBookmark();
}

int ucHex::selectedBookmark() const {
    return m_parts.lsBookmark->currentIndex().isValid() ? m_parts.lsBookmark->currentIndex().row() : -1;
}

void ucHex::selectBookmark(int index) {
    m_parts.lsBookmark->setCurrentIndex(m_parts.bookmarks->index(index));
}

void ucHex::GotoSelectedBookmark() {
    finishNibble();
    const int index = selectedBookmark();
    if (!m_fileOpen || index < 0)
        return;
    const HexCell cell = m_paging.goTo(Offset(m_parts.bookmarks->offsetAt(index)));
    FillGrid();
    m_grid1.SelectCell(cell.row, cell.col);
    m_grid1.Refresh();
}

void ucHex::cmdFirstBookmark() {
    if (!m_fileOpen || m_parts.bookmarks->count() == 0)
        return;
    selectBookmark(0);
    GotoSelectedBookmark();
}

void ucHex::cmdLastBookmark() {
    if (!m_fileOpen || m_parts.bookmarks->count() == 0)
        return;
    selectBookmark(m_parts.bookmarks->count() - 1);
    GotoSelectedBookmark();
}

void ucHex::cmdPreviousBookmark() {
    if (m_fileOpen && selectedBookmark() > 0)
        selectBookmark(selectedBookmark() - 1);
    GotoSelectedBookmark();
}

void ucHex::cmdNextBookmark() {
    if (m_fileOpen && selectedBookmark() + 1 < m_parts.bookmarks->count())
        selectBookmark(selectedBookmark() + 1);
    GotoSelectedBookmark();
}

void ucHex::DeleteBookmark() {
    finishNibble();
    m_parts.bookmarks->remove(selectedBookmark());
}

void ucHex::cmdClearBookmark() {
    finishNibble();
    if (m_fileOpen)
        m_parts.bookmarks->clear();
}

// Typed places

void ucHex::gotoOffset(qint64 offset) {
    if (!m_fileOpen || offset >= LastPosition || offset < -LastPosition)
        return;
    finishNibble();
    const HexCell cell = m_paging.goToTyped(Offset(offset));
    FillGrid();
    selectInBoth(cell);
    m_grid1.Refresh();
    m_parts.PicHex->setFocus();
}

void ucHex::gotoPage(qint64 page) {
    if (!m_fileOpen || page < 1 || page > LastPosition)
        return;
    finishNibble();
    m_paging.goToPage(page);
    FillGrid();
    selectInBoth({});
    m_parts.PicHex->setFocus();
    m_grid1.Refresh();
}

// Blocks

void ucHex::copyBlock(Offset one, Offset other, BlockForm form) {
    finishNibble();
    const std::optional<HexBlock> block = HexBlock::between(one, other, m_copy.length());
    if (block && block->size() > MostCopied) {
        m_prompts.message(this, SystemError::fromErrno(ENOMEM).description);
        return;
    }
    if (!block || !m_fileOpen)
        return;
    const std::optional<QByteArray> bytes = block->bytesIn(m_copy);
    if (!bytes) {
        m_prompts.message(this, SystemError::fromErrno(EIO).description);
        return;
    }
    BusyPointer::show();
    QGuiApplication::clipboard()->setText(blockText(*bytes, form));
    FillGrid();
    BusyPointer::restore();
}

void ucHex::fillBlock(Offset one, Offset other, quint8 byte) {
    finishNibble();
    const std::optional<HexBlock> block = HexBlock::between(one, other, m_copy.length());
    if (!block || !m_fileOpen)
        return;
    BusyPointer::show();
    const SystemError error = block->fill(m_copy, byte);
    FillGrid();
    BusyPointer::restore();
    if (error)
        m_prompts.message(this, error.description);
}
