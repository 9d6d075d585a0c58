// Search and replace in the view.

#include "hex/bytes/HexFindState.h"
#include "hex/bytes/HexSearch.h"
#include "hex/bytes/HexText.h"
#include "hex/ucHex.h"
#include "settings/Options.h"
#include "widgets/BusyPointer.h"
#include "widgets/Prompts.h"

#include <QPointer>

#include <cerrno>
#include <new>
#include <optional>

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
    if (!m_fileOpen || m_scans.isRunning())
        return NotFound;
    finishNibble();
    const QPointer<ucHex> guard(this);
    const std::optional<FilePosition> match = m_scans.find(text, type, direction);
    if (!guard)
        return NotFound;
    Q_EMIT SearchDone(text, static_cast<qint16>(type));
    return match ? static_cast<int>(match->number()) : NotFound;
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
    const QPointer<ucHex> guard(this);
    const bool found = search(text, m_findState.LastFindType, m_findState.LastFindDirection) != NotFound;
    BusyPointer::restore();
    if (guard && !found && !wasSearchStopped())
        m_prompts.message(this, notFound);
}

int ucHex::CountBytes(const QString& pStr, qint16 pFindType) {
    finishNibble();
    return m_fileOpen ? m_scans.count(pStr, static_cast<HexFindType>(pFindType)) : 0;
}

int ucHex::MarkAll(const QString& pStr, qint16 pFindType) {
    finishNibble();
    if (!m_fileOpen)
        return 0;
    try {
        return m_scans.mark(pStr, static_cast<HexFindType>(pFindType));
    } catch (const std::bad_alloc&) {
        m_prompts.message(this, SystemError::fromErrno(ENOMEM).description);
        return 0;
    }
}

int ucHex::ReplaceAll(const QString& pFind, const QString& pReplace, qint16 pFindType) {
    finishNibble();
    const std::optional<QByteArray> replacement = HexText::bytesOfHexText(pReplace);
    if (!m_fileOpen || !replacement)
        return 0;
    const QPointer<ucHex> guard(this);
    const HexSearch::Replaced replaced = m_scans.replace(pFind, static_cast<HexFindType>(pFindType), *replacement);
    if (!guard)
        return static_cast<int>(replaced.matches);
    FillGrid();
    if (replaced.matches > 0)
        setHasUnmarked(true);
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
    if (const SystemError error = m_bytes.write(FilePosition(position), text))
        m_prompts.message(this, error.description);
    else
        setHasUnmarked(true);
}
