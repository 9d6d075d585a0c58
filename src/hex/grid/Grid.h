#pragma once

#include "hex/bytes/FilePosition.h"
#include "hex/bytes/HexPaging.h"

#include <QObject>
#include <QString>

#include <array>
#include <vector>

/// The cells of one pane of a hex view: sixteen columns and the rows of a page, each with a text, and a cursor among
/// them that is never after the end of the file. The grid has the end of the data but does not page: before the cursor
/// would leave the rows it emits a signal for its owner to move the page, and continues when the signal has returned.
/// Rows and columns count from 0. Owned by the view, draws nothing itself: a GridPane shows it.
class Grid : public QObject {
    Q_OBJECT
    Q_PROPERTY(int Row READ Row WRITE setRow)
    Q_PROPERTY(int Col READ Col WRITE setCol)
    Q_PROPERTY(int Rows READ Rows WRITE setRows)
    Q_PROPERTY(int Pointer READ pointerNumber)
    Q_PROPERTY(bool HasFocus READ HasFocus)

 public:
    static constexpr int Columns = HexPaging::BytesPerRow;

    using QObject::QObject;

    int Row() const { return m_cell.row; }
    int Col() const { return m_cell.col; }
    HexCell cell() const { return m_cell; }
    /// Each keeps the old one as the place to return to.
    void setRow(int row);
    void setCol(int col);

    int Rows() const { return m_rows; }
    /// All texts are lost.
    void setRows(int rows);

    /// Empty outside the cells; "-1" where the file has no byte.
    Q_INVOKABLE QString Value(int row, int col) const;
    void setValue(int row, int col, const QString& text);

    /// Position of cell (0, 0).
    FilePosition Pointer() const { return m_pointer; }
    int pointerNumber() const { return static_cast<int>(m_pointer.number()); }
    void setPointer(FilePosition pointer) { m_pointer = pointer; }
    /// The last position that holds data: the length of the file.
    void setMax(qint64 max) { m_max = max; }

    /// Whether the pane has the keyboard focus. Only then does the grid request another page.
    bool HasFocus() const { return m_hasFocus; }
    void setHasFocus(bool hasFocus);

    /// Moves the cursor back to a cell with data if its own has none any more.
    void Refresh();
    void Reset();
    void SelectCell(int row, int col);
    bool IsBeyondData(int row, int col) const;

    /// False: not a key that moves the cursor.
    bool pressKey(int key, Qt::KeyboardModifiers modifiers);
    /// A click on the pane; the row may lie below the last one.
    void pressMouse(int row, int col);

 Q_SIGNALS:
    void EnterCell(int Row, int Col);
    void RequestNextRow();
    void RequestPreviousRow();
    void RequestNextPage();
    void RequestPreviousPage();
    void RequestBOF();
    void RequestEOF();
    /// Always ahead of a request.
    void LeaveCell(int Row, int Col);
    void Click();

    void valueChanged(int row, int col);
    void rowsChanged();
    void cursorChanged();

 private:
    using Request = void (Grid::*)();
    using Texts = std::array<QString, Columns>;

    static bool isControl(Qt::KeyboardModifiers modifiers);
    void pressDown(Qt::KeyboardModifiers modifiers);
    void pressUp(Qt::KeyboardModifiers modifiers);
    void pressLeft(Qt::KeyboardModifiers modifiers);
    void pressRight(Qt::KeyboardModifiers modifiers);
    void pressPageDown(Qt::KeyboardModifiers modifiers);
    void pressPageUp(Qt::KeyboardModifiers modifiers);
    void pressHome(Qt::KeyboardModifiers modifiers);
    void pressEnd(Qt::KeyboardModifiers modifiers);
    void goTo(int row, int col);
    void page(Request request);
    void EnterCellAt(int row, int col);
    bool SnapToValidCell(int row, int col);
    void snapOrEnter(int row, int col);

    HexCell m_cell;
    HexCell m_previous;        ///< the cell last entered
    bool m_keepLeave = false;  ///< during a key: LeaveCell was emitted already for the current cell
    int m_rows = HexPaging::PageRows;
    std::vector<Texts> m_texts{static_cast<std::size_t>(m_rows) + 1};  ///< one row more than in use
    FilePosition m_pointer;
    qint64 m_max = 0;
    bool m_hasFocus = false;
};
