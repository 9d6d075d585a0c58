// Any bytes as what is done with the tabs of the side panel: whatever it is, no band covers the title of another, no
// one leaves the area while there is room, and what is saved comes back.

#include "FuzzEntry.h"
#include "workspace/panel/BandPlaces.h"

#include <array>

namespace {

constexpr int MostTwips = 100'000;

/// The rest of the input, byte by byte; 0 behind its end.
class Bytes {
 public:
    explicit Bytes(QByteArrayView bytes) : m_rest(bytes) {}

    bool isAtEnd() const { return m_rest.isEmpty(); }
    int byte() {
        if (m_rest.isEmpty())
            return 0;
        const auto first = static_cast<unsigned char>(m_rest.front());
        m_rest = m_rest.sliced(1);
        return first;
    }
    /// One that does not exist among them.
    int tab() { return byte() % (BandPlaces::TabCount + 2) - 1; }
    int length() { return (byte() * 65536 + byte() * 256 + byte()) % (2 * MostTwips) - MostTwips; }
    QString line() {
        const qsizetype end = m_rest.indexOf('\n');
        const QByteArrayView taken = end < 0 ? m_rest : m_rest.first(end);
        m_rest = end < 0 ? QByteArrayView() : m_rest.sliced(end + 1);
        return QString::fromUtf8(taken);
    }

 private:
    QByteArrayView m_rest;
};

struct Area {
    int height = 9000;
    int title = 360;
};

void setRoom(BandPlaces& places, Area& area, Bytes& input) {
    area = {std::abs(input.length()), 1 + input.byte()};
    places.setRoom(area.height, area.title, input.byte() % 2 == 0 ? BandPlaces::Room::Real : BandPlaces::Room::Assumed);
}

void change(BandPlaces& places, Area& area, Bytes& input) {
    switch (input.byte() % 9) {
        case 0:
            return setRoom(places, area, input);
        case 1:
            return places.OpenTab(input.tab());
        case 2:
            return places.CloseTab(input.tab());
        case 3:
            return places.enlarge(input.tab());
        case 4:
            return places.OpenAllTabs();
        case 5: {
            const int tab = input.tab();
            return places.setTop(tab, input.length());
        }
        case 6: {
            const int tab = input.tab();
            return places.dragTo(tab, input.length());
        }
        case 7:
            return places.SetTab(input.line());
        default:
            return places.RestoreItem(input.line());
    }
}

void checkPlaces(const BandPlaces& places, const Area& area) {
    int open = 0;
    int bottom = 0;
    for (int tab = places.nextOpen(-1); tab >= 0; tab = places.nextOpen(tab)) {
        const int previous = places.previousOpen(tab);
        require(places.top(tab) >= (previous < 0 ? 0 : places.top(previous) + area.title + BandPlaces::Gap));
        require(places.height(tab) >= area.title);
        bottom = places.top(tab) + places.height(tab);
        ++open;
    }
    const int needed = open * area.title + (open - 1) * BandPlaces::Gap;
    require(open == 0 || bottom == std::max(area.height, needed) || needed > area.height);
}

void checkSaving(const BandPlaces& places, const Area& area) {
    BandPlaces again;
    again.setRoom(area.height, area.title);
    again.RestoreItem(places.positionLine());
    for (int tab = 0; tab < BandPlaces::TabCount; ++tab) {
        require(again.isOpen(tab) == places.isOpen(tab));
        require(!again.isOpen(tab) || (again.top(tab) == places.top(tab) && again.height(tab) == places.height(tab)));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(viewOf(data, size));
    BandPlaces places;
    Area area;
    setRoom(places, area, input);
    while (!input.isAtEnd()) {
        change(places, area, input);
        checkPlaces(places, area);
        checkSaving(places, area);
    }
    return 0;
}
