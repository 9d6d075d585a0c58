#pragma once

#include "hex/HexParts.h"
#include "hex/bytes/HexBlock.h"
#include "hex/bytes/HexPaging.h"

#include <QObject>
#include <QRect>
#include <QStringList>

#include <optional>

class ByteStore;
class HexEdits;

/// One page of a file on the screen: the two panes, kept in step, the offsets beside them, the scroll bar, and the
/// labels below. Reads the bytes and moves the cursor and the page; writes no byte. Panes count from 1: of digits, of
/// characters. Cells count from 0. Owned by the view, whose children the controls are, and destroyed before them. Does
/// not yield.
class HexPanes : public QObject {
    Q_OBJECT

 public:
    /// Bytes and edits outlive it.
    HexPanes(QWidget* view, const ByteStore& bytes, const HexEdits& edits);

    const HexParts& parts() const { return m_parts; }
    HexPaging& paging() { return m_paging; }
    const HexPaging& paging() const { return m_paging; }
    Grid& grid(int number) const { return number == 1 ? *m_grid1 : *m_grid2; }
    GridPane* pane(int number) const { return number == 1 ? m_parts.PicHex : m_parts.PicText; }
    /// 1 or 2: the pane that has the focus or had it last; 0: none had it yet.
    int activeNumber() const { return m_activeNumber; }
    GridPane* activePane() const { return pane(m_activeNumber == 2 ? 2 : 1); }

    /// The store holds a file of so many bytes.
    void open(qint64 length);
    void setEnabled(bool isEnabled);

    /// Reads the page. Does not yield: a page is shown faster than the user could notice, and a key pressed in between
    /// would be handled on a half filled page.
    void fill();
    /// The marks of typed or found bytes changed.
    void paintMarks();

    bool isScrolling() const { return m_scrollSync; }
    void moveScrollBar();
    /// By lines. False: the page stays.
    bool turn(int notches);

    void showCell(HexCell cell);
    /// Moves the cursors of both panes.
    void selectInBoth(HexCell cell);
    /// Gives a pane the keyboard focus, or has it get the focus once its window is active.
    void usePane(int number);
    /// Gives a pane the keyboard, unless the view is hidden: what is typed is then meant for another view.
    void focusPane(int number);
    void focusActivePane() { focusPane(m_activeNumber == 2 ? 2 : 1); }

    /// Brings these bytes to the top row, with the cursor on the first. All of them are painted as found until the
    /// cursor moves to another byte or another file is loaded.
    void showMatch(const HexBlock& match);

    bool offsetsAreHex() const { return m_offsetHexMode; }
    void toggleOffsets();

    /// "Pg 1/3, Pos 0/960"
    QString cursorText() const;
    /// The cursor of the pane in use, in coordinates of the view.
    QRect cursorRect() const;

 Q_SIGNALS:
    /// Page, cell or pane.
    void positionChanged();
    /// The cursor of the pane of digits leaves a cell.
    void cellLeft(int row, int col);
    /// A key moves the cursor off the page.
    void firstPageRequested();
    void lastPageRequested();
    void nextPageRequested();
    void previousPageRequested();
    void nextLineRequested();
    void previousLineRequested();

 private:
    void connectGrid(int number);
    void fillCells();
    bool isChanged(HexCell cell) const;
    bool isFound(HexCell cell) const;
    void forgetMatchUnlessAt(HexCell cell);
    QStringList offsetTexts(bool toEndOfFile) const;
    void enterCell(int number, HexCell cell);
    void enterPane(int number);

    QWidget* m_view;
    const ByteStore& m_bytes;
    const HexEdits& m_edits;
    HexPaging m_paging;
    Grid* m_grid1;
    Grid* m_grid2;
    HexParts m_parts;
    HexCell m_shown;  ///< the one that the labels are about
    std::optional<HexBlock> m_match;
    int m_activeNumber = 0;
    bool m_offsetHexMode = false;
    bool m_scrollSync = false;  ///< the program moves the scroll bar
};
