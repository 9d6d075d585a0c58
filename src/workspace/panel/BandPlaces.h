#pragma once

#include <QString>

#include <array>

/// Where the bands of the side panel are, without a window: which tabs are open, and the top of each band. A band's
/// height follows from the next open band. All lengths are twips, counted from the top of the area of the bands. Every
/// call accepts a tab that does not exist, and does nothing.
///
/// A top that was set is kept as it is and saved so. While the panel is too low for it, the band is shown further up,
/// as far as the titles below need room.
class BandPlaces {
 public:
    static constexpr int TabCount = 3;
    static constexpr int Gap = 20;

    /// Whether the height is the one that is seen, or may be that of a window that is not laid out yet.
    enum class Room { Real, Assumed };

    /// The height of the area and that of one title. Until the first call both are assumed.
    void setRoom(int areaHeight, int titleHeight, Room room = Room::Real);

    bool isOpen(int tab) const { return isTab(tab) && m_open[index(tab)]; }
    /// As shown.
    int top(int tab) const { return isTab(tab) ? m_shown[index(tab)] : 0; }
    /// As shown; 0 for a closed tab.
    int height(int tab) const;
    /// The nearest open tab before or after that one, -1 without one.
    int previousOpen(int tab) const;
    int nextOpen(int tab) const;

    /// A closed tab gets an equal share of the height. One that is open stays as it is.
    void OpenTab(int tab);
    /// An open tab gets all of the height but the titles of the others.
    void enlarge(int tab);
    /// The next open band moves up to the top of this one.
    void CloseTab(int tab);
    /// Opens every tab, each with a third of the height. With an assumed height they are thirds of the next real one.
    void OpenAllTabs();
    void setTop(int tab, int top);
    /// Moves the top of a band, as far as its own title and those of its neighbours stay visible. The first band stays
    /// at 0.
    void dragTo(int tab, int top);

    /// Sets one tab from a line of three fields with tabs between them: index, "True" or "False", top. A field that
    /// cannot be read changes nothing.
    void SetTab(const QString& line);
    /// All tabs from a line of positionLine(). A field that cannot be read, or is missing, changes nothing.
    void RestoreItem(const QString& line);
    /// For each tab "True" or "False" and the top as it was set, each with a tab after it.
    QString positionLine() const;

 private:
    using Lengths = std::array<int, TabCount>;

    static bool isTab(int tab) { return tab >= 0 && tab < TabCount; }
    static size_t index(int tab) { return static_cast<size_t>(tab); }
    int& kept(int tab) { return m_kept[index(tab)]; }
    Lengths sharedHeights(int opening) const;
    void keepShown();
    void place(int opened, const Lengths& heights);
    void placeThirds();
    void fit();

    std::array<bool, TabCount> m_open{};
    Lengths m_kept{};   ///< as set
    Lengths m_shown{};  ///< as far as the height allows
    int m_areaHeight = 9000;
    int m_titleHeight = 360;
    Room m_room = Room::Assumed;
    bool m_thirds = false;  ///< of the next real height, unless a band is moved before
};
