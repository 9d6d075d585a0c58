#include "hex/HexParts.h"

#include "hex/BookmarkList.h"
#include "hex/bytes/HexPaging.h"
#include "hex/grid/GridAccessible.h"
#include "hex/grid/GridPane.h"
#include "hex/grid/HexMarker.h"
#include "hex/grid/OffsetPane.h"
#include "widgets/ClickLabel.h"
#include "widgets/Icons.h"

#include <QAction>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QScrollBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int MarkerIndent = 6;
constexpr int RulerHeight = 28;
constexpr int GapOfGroups = 18;
constexpr int RoomForRounding = 2;

struct ScrollButton {
    const char* key;
    const char* toolTip;
    const char* icon;
};

constexpr ScrollButton ScrollButtons[] = {
    {"MoveFirstPage", "Goto First Page", "rowfirst"},      {"MovePreviousPage", "Goto PreviousPage", "pageprev"},
    {"MovePreviousLine", "Goto Previous Line", "rowprev"}, {nullptr, nullptr, nullptr},
    {"MoveNextLine", "Goto Next Line", "rownext"},         {"MoveNextPage", "Goto Next Page", "pagenext"},
    {"MoveLastPage", "Goto Last Page", "rowlast"},
};

/// One label below the panes: its heading, the text before it, its first text, and its longest text.
struct InfoRow {
    const char* heading;  ///< empty: part of the group of the one before
    const char* caption;
    const char* text;
    const char* longest;
};

constexpr std::array<InfoRow, HexParts::InfoCount> InfoRows{{
    {"Selected Byte", "Hex:", "", "FF"},
    {"", "Dec:", "000 ", "255"},
    {"Offset", "Hex:", "", "7FFFFFFE"},
    {"", "Dec:", "", "2147483646"},
    {"Page", "", "0 of 0 ", "6710887/6710887"},
    {"File Size", "", "0 Bytes ", "2147483647"},
    {"Edit Mode", "", "Hex", "Hex"},
    {"", "", "Text", "Text"},
    {"Bytes per Page", "", "0 Bytes ", "320"},
}};

QString arrayName(const char* name, std::size_t index) {
    return u"%1(%2)"_qs.arg(QLatin1String(name)).arg(index);
}

}  // namespace

HexParts::HexParts(QWidget* view, Grid& grid1, Grid& grid2) {
    makePanes(view, grid1, grid2);
    makeRuler(view);
    makeBookmarks(view);
    makeScrollButtons(view);
    makeInfo(view);
    ProgressBar1 = new QProgressBar(view);
    ProgressBar1->setObjectName(u"ProgressBar1"_qs);
    ProgressBar1->setRange(0, 100);
    ProgressBar1->hide();
    layOut(view);
}

void HexParts::makePanes(QWidget* view, Grid& grid1, Grid& grid2) {
    PicOffSet = new OffsetPane(view);
    PicOffSet->setObjectName(u"PicOffSet"_qs);
    PicOffSet->setAccessibleName(u"Offsets"_qs);
    PicHex = new GridPane(grid1, u"00"_qs, view);
    // Done before it has an accessible name: naming it creates its accessible object.
    GridAccessible::follow(*PicHex);
    PicHex->setObjectName(u"PicHex"_qs);
    PicHex->setAccessibleName(u"Hex"_qs);
    PicHex->setCursorName(u"Shape1"_qs);
    PicText = new GridPane(grid2, u"0"_qs, view);
    GridAccessible::follow(*PicText);
    PicText->setObjectName(u"PicText"_qs);
    PicText->setAccessibleName(u"Text"_qs);
    PicText->setCursorName(u"Shape2"_qs);
    VScroll1 = new QScrollBar(Qt::Vertical, view);
    VScroll1->setObjectName(u"VScroll1"_qs);
    VScroll1->setRange(0, HexPaging::ScrollMaximum);
}

void HexParts::makeRuler(QWidget* view) {
    lblSelect = new ClickLabel(view);
    lblSelect->setObjectName(u"lblSelect"_qs);
    lblSelect->setFocusPolicy(Qt::TabFocus);  // the keyboard's way to what a click on the ruler or the offsets does
    ruler = new QWidget(view);
    ruler->setFixedSize(PicHex->width(), RulerHeight);
    for (std::size_t i = 0; i < Label2.size(); ++i) {
        Label2[i] = new ClickLabel(ruler);
        Label2[i]->setObjectName(arrayName("Label2", i));
        Label2[i]->setFont(GridPane::paneFont());
        Label2[i]->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        const QRect cell = PicHex->cellRect({0, static_cast<int>(i)});
        Label2[i]->setGeometry(cell.x(), 0, cell.width(), RulerHeight);
    }
    Sign = {new HexMarker(ruler), new HexMarker(PicOffSet)};
    for (std::size_t i = 0; i < Sign.size(); ++i)
        Sign[i]->setObjectName(arrayName("Sign", i));
    captionRuler(false);
    moveMarkers(0, 0);
}

void HexParts::makeBookmarks(QWidget* view) {
    bookmarks = new HexBookmarks(view);
    fmInfo = new QGroupBox(u"Bookmarks (Hex,Dec)"_qs, view);
    fmInfo->setObjectName(u"fmInfo"_qs);
    lsBookmark = new BookmarkList(fmInfo);
    lsBookmark->setObjectName(u"lsBookmark"_qs);
    lsBookmark->setAccessibleName(u"Bookmarks"_qs);
    lsBookmark->setModel(bookmarks);
    auto* layout = new QVBoxLayout(fmInfo);
    layout->addWidget(lsBookmark);
}

void HexParts::makeScrollButtons(QWidget* view) {
    tbScroll = new QToolBar(view);
    tbScroll->setObjectName(u"tbScroll"_qs);
    for (const ScrollButton& button : ScrollButtons) {
        if (button.key == nullptr) {
            tbScroll->addSeparator();
            continue;
        }
        QAction* action = tbScroll->addAction(Icons::named(button.icon), QString::fromLatin1(button.toolTip));
        action->setData(QString::fromLatin1(button.key));
        tbScroll->widgetForAction(action)->setObjectName(u"tbScroll.%1"_qs.arg(QLatin1String(button.key)));
        tbScroll->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    }
}

void HexParts::makeInfo(QWidget* view) {
    for (std::size_t i = 0; i < lblInfo.size(); ++i) {
        lblInfo[i] = new ClickLabel(QString::fromLatin1(InfoRows[i].text), view);
        lblInfo[i]->setObjectName(arrayName("lblInfo", i));
        lblInfo[i]->setTextFormat(Qt::PlainText);
        lblInfo[i]->setFont(GridPane::paneFont());
        // Its neighbours stay where they are when its text changes.
        const QString longest = QString::fromLatin1(InfoRows[i].longest);
        lblInfo[i]->setMinimumWidth(lblInfo[i]->fontMetrics().horizontalAdvance(longest) + RoomForRounding);
    }
}

void HexParts::layOut(QWidget* view) const {
    auto* panes = new QGridLayout;
    panes->setSpacing(4);
    panes->addWidget(lblSelect, 0, 0, Qt::AlignTop);
    panes->addWidget(ruler, 0, 1);
    QWidget* const inRow[] = {PicOffSet, PicHex, PicText, VScroll1, fmInfo};
    int column = 0;
    for (QWidget* part : inRow)
        panes->addWidget(part, 1, column++, part == VScroll1 || part == fmInfo ? Qt::Alignment() : Qt::AlignTop);
    panes->setColumnStretch(4, 1);
    panes->setRowStretch(1, 0);

    auto* all = new QVBoxLayout(view);
    all->addLayout(panes);
    all->addWidget(tbScroll);
    all->addWidget(ProgressBar1);
    all->addLayout(layOutInfo(view));
    all->addStretch();
}

/// The labels of a group are in a row under its heading.
QLayout* HexParts::layOutInfo(QWidget* view) const {
    auto* groups = new QHBoxLayout;
    groups->setSpacing(GapOfGroups);
    QHBoxLayout* row = nullptr;
    for (std::size_t i = 0; i < lblInfo.size(); ++i) {
        if (*InfoRows[i].heading != '\0') {
            auto* group = new QVBoxLayout;
            group->setSpacing(2);
            group->addWidget(new QLabel(QString::fromLatin1(InfoRows[i].heading), view));
            row = new QHBoxLayout;
            row->setSpacing(6);
            group->addLayout(row);
            groups->addLayout(group);
        }
        if (*InfoRows[i].caption != '\0')
            row->addWidget(new QLabel(QString::fromLatin1(InfoRows[i].caption), view));
        row->addWidget(lblInfo[i], 1);
    }
    groups->addStretch(1);
    return groups;
}

void HexParts::setScrollButtonsEnabled(bool enabled) const {
    for (QAction* action : tbScroll->actions())
        action->setEnabled(enabled);
}

void HexParts::captionRuler(bool hexMode) const {
    lblSelect->setText(hexMode ? u"Offset - HEX"_qs : u"Offset - DEC"_qs);
    for (std::size_t i = 0; i < Label2.size(); ++i)
        Label2[i]->setText(u"%1"_qs.arg(i, 2, hexMode ? 16 : 10, QLatin1Char('0')).toUpper());
}

void HexParts::moveMarkers(int row, int col) const {
    Sign[0]->move(Label2[static_cast<std::size_t>(col)]->x() + MarkerIndent, RulerHeight - HexMarker::Size);
    Sign[1]->move(PicOffSet->width() - HexMarker::Size, MarkerIndent + GridPane::RowHeight * row);
}

int HexParts::selectedBookmark() const {
    const QModelIndex current = lsBookmark->currentIndex();
    return current.isValid() ? current.row() : -1;
}

void HexParts::selectBookmark(int index) const {
    lsBookmark->setCurrentIndex(bookmarks->index(index));
}
