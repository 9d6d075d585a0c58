#include "hex/HexScans.h"

#include "hex/HexPanes.h"
#include "hex/LongScan.h"
#include "hex/bytes/HexBlock.h"
#include "hex/bytes/HexFindState.h"
#include "hex/bytes/ObservedBytes.h"
#include "hex/grid/Grid.h"
#include "settings/Options.h"

#include <QScopeGuard>

#include <utility>
#include <vector>

HexScans::HexScans(QWidget* view, ObservedBytes& bytes, HexPanes& panes, const Options& options, HexFindState& state,
                   Notice notice)
    : m_view(view), m_bytes(bytes), m_panes(panes), m_options(options), m_state(state), m_notice(std::move(notice)) {}

bool HexScans::scanFor(const std::optional<HexNeedle>& needle,
                       const std::function<void(HexSearch&, const HexNeedle&)>& scan) {
    if (m_isRunning)
        return false;
    m_wasStopped = false;
    return needle && run(u"Searching. Esc stops it."_qs, [&](const ScanWatch& watch) {
               HexSearch search(m_bytes, HexSearch::BlockSize, watch);
               scan(search, *needle);
           });
}

bool HexScans::run(const QString& text, const std::function<void(const ScanWatch&)>& work) {
    if (m_isRunning)
        return false;
    const QPointer<QWidget> alive(m_view);
    LongScan shown(m_panes.parts().ProgressBar1, m_notice, text);
    m_isRunning = true;
    const auto ended = qScopeGuard([this, &alive] {
        if (alive)
            m_isRunning = false;
    });
    work([&shown](int percent) { return shown.goesOn(percent); });
    if (!alive)
        return false;
    m_wasStopped = shown.wasStopped();
    return true;
}

std::optional<FilePosition> HexScans::find(const QString& text, HexFindType type, HexFindDirection direction) {
    const bool isDown = direction == HexFindDirection::Down;
    const FilePosition cursor = m_panes.paging().positionOf(m_panes.grid(1).cell());
    m_wasStopped = false;
    if (isDown && cursor.number() >= m_bytes.length())
        return std::nullopt;
    m_state.LastFindText = text;
    m_state.LastFindType = type;
    m_state.LastFindDirection = direction;
    m_panes.usePane(type == HexFindType::Bytes ? 1 : 2);
    std::optional<HexBlock> match;
    const bool wraps = m_options.ContinueSearch;
    const bool isOver = scanFor(HexNeedle::make(text, type), [&](const HexSearch& search, const HexNeedle& needle) {
        const auto at = isDown ? search.findDown(needle, cursor + 1, wraps) : search.findUp(needle, cursor, wraps);
        if (at)
            match = HexBlock{*at, *at + needle.size() - 1};
    });
    if (!isOver || !match)
        return std::nullopt;
    m_panes.showMatch(*match);
    return match->first;
}

int HexScans::count(const QString& text, HexFindType type) {
    qint64 matches = 0;
    scanFor(HexNeedle::make(text, type),
            [&](const HexSearch& search, const HexNeedle& needle) { matches = search.count(needle); });
    return static_cast<int>(matches);
}

int HexScans::mark(const QString& text, HexFindType type) {
    std::vector<qint32> offsets;
    const bool isOver = scanFor(HexNeedle::make(text, type), [&](const HexSearch& search, const HexNeedle& needle) {
        search.forEachMatch(
            needle, [&](FilePosition match) { offsets.push_back(static_cast<qint32>(Offset(match).number())); });
    });
    if (!isOver)
        return 0;
    const auto matches = static_cast<int>(offsets.size());
    HexBookmarks& bookmarks = *m_panes.parts().bookmarks;
    const int before = bookmarks.count();
    bookmarks.addAll(std::move(offsets));
    if (bookmarks.count() > before)
        m_panes.parts().selectBookmark(bookmarks.count() - 1);
    return matches;
}

HexSearch::Replaced HexScans::replace(const QString& text, HexFindType type, const QByteArray& replacement) {
    HexSearch::Replaced replaced;
    scanFor(HexNeedle::make(text, type),
            [&](HexSearch& search, const HexNeedle& needle) { replaced = search.replaceAll(needle, replacement); });
    return replaced;
}

SystemError HexScans::fill(const HexBlock& block, quint8 byte) {
    HexBlock::Filled filled;
    const bool isOver = run(u"Filling. Esc stops it."_qs,
                            [&](const ScanWatch& watch) { filled = block.fill(m_bytes.unobserved(), byte, watch); });
    if (isOver)
        m_bytes.reportFill(block, byte, filled.bytes, static_cast<bool>(filled.error));
    return filled.error;
}
