#pragma once

#include "hex/bytes/HexPaging.h"

#include <QHash>
#include <QStaticText>
#include <QWidget>

#include <functional>
#include <optional>

class Grid;
class QPainter;

/// The picture of a Grid, and the source of its keys, clicks and focus. Paints what the grid holds, only the cells that
/// changed; the window keeps the picture. The cursor is a child of its own, inverted while the pane has the focus and
/// shaded while it has not. Sizes are logical pixels; colours are the palette's. Belongs to the hex view, like the
/// grid.
class GridPane : public QWidget {
    Q_OBJECT

 public:
    static constexpr int RowHeight = 19;
    static constexpr int Height = RowHeight * HexPaging::PageRows;
    static constexpr int CellHeight = Height / 20;  ///< whatever rows are in use
    int CellWidth() const { return width() / HexPaging::BytesPerRow; }

    /// `widest` is the longest text of a cell. The grid outlives the pane.
    GridPane(Grid& grid, const QString& widest, QWidget* parent = nullptr);

    void setCursorName(const QString& name);
    /// Which cells are painted as changed; asked at each painting.
    void setMarks(std::function<bool(HexCell)> isMarked) { m_isMarked = std::move(isMarked); }
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

    QRect cellRect(HexCell cell) const;
    /// The one under a point of the pane, if the grid has a row there.
    std::optional<HexCell> cellAt(const QPoint& point) const;
    /// The font of all panes of a hex view, as high as the rows can take.
    static QFont paneFont();

 Q_SIGNALS:
    /// Before the grid looks at the key, which does not when it is `taken`.
    void keyPressed(QKeyEvent* event, bool* taken);
    /// What a key or an input method typed; control characters are among it. Unless it is `taken` the key goes to the
    /// parent.
    void typed(const QString& text, bool* taken);
    void focusGained();
    void focusLost();
    void wheelTurned(int notches);
    /// Position in the pane. The key for menus asks at the cursor.
    void rightReleased(const QPoint& position);
    /// What a screen reader is notified of: the cursor moved, a cell changed, all cells did.
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

    /// Takes its size, listens to the grid and puts the cursor on its cell.
    void InitializeGrid(int cellWidth);
    void DrawCell(QPainter& painter, const QRect& rect, HexCell cell) const;
    void paintDivider(QPainter& painter) const;
    const QStaticText& laidOut(const QString& text) const;
    void updateCell(HexCell cell);
    void moveCursor();

    Grid& m_grid;
    Cursor* m_cursor;
    std::function<bool(HexCell)> m_isMarked;
    mutable QHash<QString, QStaticText> m_laidOut;  ///< by its text; there are no more than bytes and digits
    bool m_hasBorder = false;
    int m_wheel = 0;  ///< eighths of a degree that are no whole notch yet
};
