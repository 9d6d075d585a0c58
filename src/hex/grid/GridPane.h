#pragma once

#include "hex/bytes/HexPaging.h"

#include <QHash>
#include <QStaticText>
#include <QWidget>

#include <functional>
#include <optional>

class Grid;
class QPainter;

/// Paints a Grid, and is the source of its keys, clicks and focus. It paints only the cells that changed; the window
/// keeps the picture. The cursor is a child of its own, inverted while the pane has the focus and shaded while it has
/// not. Sizes are logical pixels; colours are the palette's. Owned by the hex view, like the grid.
class GridPane : public QWidget {
    Q_OBJECT

 public:
    static constexpr int RowHeight = 19;
    static constexpr int Height = RowHeight * HexPaging::PageRows;
    static constexpr int CellHeight = Height / 20;  ///< independent of the rows in use
    int CellWidth() const { return width() / HexPaging::BytesPerRow; }

    /// `widest` is the longest text of a cell. The grid outlives the pane.
    GridPane(Grid& grid, const QString& widest, QWidget* parent = nullptr);

    void setCursorName(const QString& name);
    /// Which cells are painted as changed; called at each painting.
    void setMarks(std::function<bool(HexCell)> isMarked) { m_isMarked = std::move(isMarked); }
    /// The same for the bytes that a search found.
    void setMatches(std::function<bool(HexCell)> isFound) { m_isFound = std::move(isFound); }
    /// Off while nothing is loaded.
    void setCursorShown(bool shown);
    /// A line around the pane, for the one in use.
    void setBorder(bool hasBorder);
    bool hasBorder() const { return m_hasBorder; }

    /// Around a new page: nothing is painted or notified in between.
    void beginFill();
    void endFill();

    const Grid& grid() const { return m_grid; }
    Grid& grid() { return m_grid; }
    bool isMarked(HexCell cell) const { return m_isMarked && m_isMarked(cell); }
    bool isFound(HexCell cell) const { return m_isFound && m_isFound(cell); }

    QRect cellRect(HexCell cell) const;
    /// The one under a point of the pane, if the grid has a row there.
    std::optional<HexCell> cellAt(const QPoint& point) const;
    /// The font of all panes of a hex view, as high as the rows allow.
    static QFont paneFont();

 Q_SIGNALS:
    /// Emitted before the grid handles the key, which it does not if it is `taken`.
    void keyPressed(QKeyEvent* event, bool* taken);
    /// Text from a key or an input method, which may contain control characters. Unless it is `taken`, the key is
    /// passed to the parent.
    void typed(const QString& text, bool* taken);
    void focusGained();
    void focusLost();
    void wheelTurned(int notches);
    /// Position in the pane. For the menu key it is that of the cursor.
    void rightReleased(const QPoint& position);
    /// Events for screen readers: the cursor moved, a cell changed, all cells did.
    void cursorMoved();
    void cellChanged(int row, int col);
    void pageChanged();

 protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void changeEvent(QEvent* event) override;

 private:
    class Cursor;

    /// Sets its size, connects to the grid and places the cursor on its cell.
    void InitializeGrid(int cellWidth);
    void DrawCell(QPainter& painter, const QRect& rect, HexCell cell) const;
    void paintDivider(QPainter& painter) const;
    void paintBorder(QPainter& painter) const;
    const QStaticText& laidOut(const QString& text) const;
    void updateCell(HexCell cell);
    void moveCursor();

    Grid& m_grid;
    Cursor* m_cursor;
    std::function<bool(HexCell)> m_isMarked;
    std::function<bool(HexCell)> m_isFound;
    mutable QHash<QString, QStaticText> m_laidOut;  ///< by its text; there are no more than bytes and digits
    bool m_hasBorder = false;
    int m_wheel = 0;  ///< eighths of a degree that are no whole notch yet
};
