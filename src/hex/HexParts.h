#pragma once

#include "hex/bytes/HexBookmarks.h"

#include <QObject>

#include <array>

class BookmarkList;
class ClickLabel;
class Grid;
class GridPane;
class HexMarker;
class OffsetPane;
class QGroupBox;
class QLayout;
class QProgressBar;
class QScrollBar;
class QToolBar;
class QWidget;

/// The numbers of the labels below the panes of a hex view.
enum class HexInfo { ByteHex, ByteDec, OffsetHex, OffsetDec, Page, FileSize, HexMode, TextMode, PageBytes };

/// The controls of a hex view under their names, created and laid out once. They are owned by the view; this class only
/// has pointers to them.
struct HexParts {
    static constexpr int InfoCount = 9;

    HexParts(QWidget* view, Grid& grid1, Grid& grid2);

    ClickLabel* info(HexInfo which) const { return lblInfo[static_cast<std::size_t>(which)]; }
    void setScrollButtonsEnabled(bool enabled) const;
    void captionRuler(bool hexMode) const;
    /// Moves the markers beside a row and a column of the panes.
    void moveMarkers(int row, int col) const;
    /// The one in the list that has the cursor, -1 when none has.
    int selectedBookmark() const;
    void selectBookmark(int index) const;

    ClickLabel* lblSelect = nullptr;
    QWidget* ruler = nullptr;
    std::array<ClickLabel*, 16> Label2{};
    OffsetPane* PicOffSet = nullptr;
    GridPane* PicHex = nullptr;
    GridPane* PicText = nullptr;
    std::array<HexMarker*, 2> Sign{};  ///< of the column, of the row
    QScrollBar* VScroll1 = nullptr;
    QGroupBox* fmInfo = nullptr;
    BookmarkList* lsBookmark = nullptr;
    QToolBar* tbScroll = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    std::array<ClickLabel*, InfoCount> lblInfo{};
    HexBookmarks* bookmarks = nullptr;

 private:
    void makePanes(QWidget* view, Grid& grid1, Grid& grid2);
    void makeRuler(QWidget* view);
    void makeBookmarks(QWidget* view);
    void makeScrollButtons(QWidget* view);
    void makeInfo(QWidget* view);
    void layOut(QWidget* view) const;
    QLayout* layOutInfo(QWidget* view) const;
};
