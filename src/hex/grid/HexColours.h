#pragma once

#include <QColor>

#include <array>

class QPalette;

/// Colours of the hex view, derived from those of the desktop so that they can be read in any of its themes.
namespace HexColours {

/// How the byte of a cell is painted.
struct Cell {
    QColor ground;
    QColor text;
};

/// Of a byte that was typed, or found by a search, or both.
Cell cell(const QPalette& palette, bool isChanged, bool isFound);

/// The four that there are, to be made once for each painting.
class Cells {
 public:
    explicit Cells(const QPalette& palette);
    const Cell& of(bool isChanged, bool isFound) const { return m_cells[(isChanged ? 1U : 0U) + (isFound ? 2U : 0U)]; }

 private:
    std::array<Cell, 4> m_cells;
};

/// Of bytes that were typed, and of their background.
QColor changedText(const QPalette& palette);
QColor changedBase(const QPalette& palette);

/// Of the line around the pane in use, which stands out from the pane and from the window.
QColor border(const QPalette& palette);
/// Of the markers of row and column, on the window.
QColor marker(const QPalette& palette);

}  // namespace HexColours
