// Search and replace in the view.

#include "hex/bytes/HexFindState.h"
#include "hex/bytes/HexSearch.h"
#include "hex/bytes/HexText.h"
#include "hex/grid/Grid.h"
#include "hex/ucHex.h"
#include "settings/Options.h"
#include "widgets/BusyPointer.h"
#include "widgets/Prompts.h"

namespace {

constexpr int NotFound = -1;

}  // namespace

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
    const FilePosition cursor = m_panes.paging().positionOf(m_panes.grid(1).cell());
    int result = NotFound;
    if (!isDown || cursor.number() < m_copy.length()) {
        m_findState.LastFindText = text;
        m_findState.LastFindType = type;
        m_findState.LastFindDirection = direction;
        m_panes.usePane(type == HexFindType::Bytes ? 1 : 2);
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
    const HexCell cell = m_panes.paging().goTo(Offset(match));
    FillGrid();
    m_panes.grid(2).Refresh();
    m_panes.selectInBoth(cell);
    return static_cast<int>(match.number());
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
    if (ActiveGrid() == 2)
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
    HexBookmarks& bookmarks = *m_panes.parts().bookmarks;
    const int before = bookmarks.count();
    const qint64 matches = HexSearch(m_copy).forEachMatch(*needle, [&](FilePosition match) {
        bookmarks.add(HexText::hexOf(Offset(match)), QString::number(Offset(match).number()));
    });
    if (bookmarks.count() > before)
        m_panes.parts().selectBookmark(bookmarks.count() - 1);
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
