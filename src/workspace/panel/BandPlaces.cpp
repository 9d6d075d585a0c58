#include "workspace/panel/BandPlaces.h"

#include "settings/SettingText.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

namespace {

constexpr double MostTwips = 1'000'000;

std::optional<int> twipsOf(const QString& field) {
    bool isNumber = false;
    const double twips = field.trimmed().toDouble(&isNumber);
    if (!isNumber || std::abs(twips) > MostTwips || std::isnan(twips))
        return std::nullopt;
    return static_cast<int>(std::lround(twips));
}

}  // namespace

void BandPlaces::setRoom(int areaHeight, int titleHeight, Room room) {
    m_areaHeight = areaHeight;
    m_titleHeight = titleHeight;
    m_room = room;
    if (m_thirds)
        placeThirds();
    fit();
}

int BandPlaces::height(int tab) const {
    if (!isOpen(tab))
        return 0;
    const int next = nextOpen(tab);
    const int bottom = next < 0 ? m_areaHeight : top(next) - Gap;
    return std::max(bottom - top(tab), m_titleHeight);
}

int BandPlaces::previousOpen(int tab) const {
    do
        --tab;
    while (tab >= 0 && !isOpen(tab));
    return tab;
}

int BandPlaces::nextOpen(int tab) const {
    do
        ++tab;
    while (tab < TabCount && !isOpen(tab));
    return tab < TabCount ? tab : -1;
}

void BandPlaces::OpenTab(int tab) {
    if (!isTab(tab) || isOpen(tab))
        return;
    keepShown();
    const Lengths heights = sharedHeights(tab);
    m_open[index(tab)] = true;
    place(tab, heights);
    fit();
}

void BandPlaces::enlarge(int tab) {
    if (!isOpen(tab))
        return;
    keepShown();
    Lengths heights;
    heights.fill(m_titleHeight);
    place(tab, heights);
    fit();
}

/// The open bands keep their proportions.
BandPlaces::Lengths BandPlaces::sharedHeights(int opening) const {
    Lengths heights{};
    for (int tab = 0; tab < TabCount; ++tab)
        heights[index(tab)] = height(tab);
    const int before = std::accumulate(heights.begin(), heights.end(), 0);
    const auto others = static_cast<int>(std::ranges::count(m_open, true));
    const int all = m_areaHeight - Gap * others;
    const int share = all / (others + 1);
    for (int& height : heights) {
        if (height > 0)
            height = std::max(m_titleHeight, static_cast<int>(qint64{height} * (all - share) / before));
    }
    heights[index(opening)] = share;
    return heights;
}

/// Bands up to the opened one are placed from above, the others from below.
void BandPlaces::place(int opened, const Lengths& heights) {
    for (int tab = 0; tab <= opened; ++tab) {
        const int previous = previousOpen(tab);
        if (isOpen(tab))
            kept(tab) = previous < 0 ? 0 : kept(previous) + heights[index(previous)] + Gap;
    }
    for (int tab = TabCount - 1; tab > opened; --tab) {
        const int next = nextOpen(tab);
        if (isOpen(tab))
            kept(tab) = (next < 0 ? m_areaHeight : kept(next) - Gap) - heights[index(tab)];
    }
}

void BandPlaces::CloseTab(int tab) {
    if (!isOpen(tab))
        return;
    keepShown();
    const int next = nextOpen(tab);
    if (next >= 0)
        kept(next) = kept(tab);
    m_open[index(tab)] = false;
    fit();
}

void BandPlaces::OpenAllTabs() {
    m_open.fill(true);
    placeThirds();
    fit();
}

void BandPlaces::placeThirds() {
    for (int tab = 0; tab < TabCount; ++tab)
        kept(tab) = tab * m_areaHeight / TabCount;
    m_thirds = m_room == Room::Assumed;
}

void BandPlaces::setTop(int tab, int top) {
    if (!isTab(tab))
        return;
    kept(tab) = top;
    m_thirds = false;
    fit();
}

void BandPlaces::dragTo(int tab, int top) {
    const int previous = isOpen(tab) ? previousOpen(tab) : -1;
    if (previous < 0)
        return;
    keepShown();
    const int next = nextOpen(tab);
    const int least = kept(previous) + m_titleHeight + Gap;
    const int most = (next < 0 ? m_areaHeight : kept(next) - Gap) - m_titleHeight;
    kept(tab) = std::clamp(top, least, std::max(least, most));
    fit();
}

void BandPlaces::SetTab(const QString& line) {
    const QStringList fields = line.split(u'\t');
    bool isNumber = false;
    const int tab = fields.at(0).trimmed().toInt(&isNumber);
    if (!isNumber || !isTab(tab))
        return;
    const std::optional<bool> open = SettingText::toBoolean(fields.value(1));
    if (open)
        *open ? OpenTab(tab) : CloseTab(tab);
    const std::optional<int> top = twipsOf(fields.value(2));
    if (top && isOpen(tab))
        setTop(tab, *top);
}

void BandPlaces::RestoreItem(const QString& line) {
    const QStringList fields = line.split(u'\t');
    for (int tab = 0; tab < TabCount; ++tab) {
        const std::optional<bool> open = SettingText::toBoolean(fields.value(2 * tab));
        if (open)
            *open ? OpenTab(tab) : CloseTab(tab);
    }
    for (int tab = 0; tab < TabCount; ++tab) {
        const std::optional<int> top = twipsOf(fields.value(2 * tab + 1));
        if (!top || !isOpen(tab))
            continue;
        kept(tab) = *top;
        m_thirds = false;
    }
    fit();
}

QString BandPlaces::positionLine() const {
    QString line;
    for (size_t tab = 0; tab < TabCount; ++tab)
        line += u"%1\t%2\t"_qs.arg(m_open[tab] ? u"True"_qs : u"False"_qs).arg(m_kept[tab]);
    return line;
}

/// A change starts from what is seen.
void BandPlaces::keepShown() {
    m_thirds = false;
    for (size_t tab = 0; tab < TabCount; ++tab) {
        if (m_open[tab])
            m_kept[tab] = m_shown[tab];
    }
}

/// From below, so that the titles of the lower bands have room, then from above, so that no band covers the title of
/// the one before.
void BandPlaces::fit() {
    m_shown = m_kept;
    int bottom = m_areaHeight;
    for (int tab = previousOpen(TabCount); tab >= 0; tab = previousOpen(tab)) {
        int& shown = m_shown[index(tab)];
        shown = std::min(shown, bottom - m_titleHeight);
        bottom = shown - Gap;
    }
    int least = 0;
    for (int tab = nextOpen(-1); tab >= 0; tab = nextOpen(tab)) {
        int& shown = m_shown[index(tab)];
        shown = least == 0 ? 0 : std::max(shown, least);
        least = shown + m_titleHeight + Gap;
    }
}
