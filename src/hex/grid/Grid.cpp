#include "hex/grid/Grid.h"

#include <QKeyEvent>

#include <algorithm>

namespace {

const QString NoData = u"-1"_qs;

}  // namespace

void Grid::setRow(int row) {
    m_previous.row = std::min(m_cell.row, m_rows - 1);
    m_cell.row = row;
}

void Grid::setCol(int col) {
    m_previous.col = m_cell.col;
    m_cell.col = col;
}

void Grid::setRows(int rows) {
    m_rows = rows;
    m_texts.assign(static_cast<std::size_t>(rows) + 1, {});
    m_previous.row = std::min(m_previous.row, rows - 1);
    Q_EMIT rowsChanged();
}

QString Grid::Value(int row, int col) const {
    if (row < 0 || row > m_rows || col < 0 || col >= Columns)
        return {};
    return m_texts[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
}

void Grid::setValue(int row, int col, const QString& text) {
    if (row < 0 || row > m_rows || col < 0 || col >= Columns)
        return;
    m_texts[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] = IsBeyondData(row, col) ? NoData : text;
    Q_EMIT valueChanged(row, col);
}

void Grid::setHasFocus(bool hasFocus) {
    m_hasFocus = hasFocus;
    Q_EMIT cursorChanged();
}

bool Grid::IsBeyondData(int row, int col) const {
    return col >= Columns || (m_pointer + row * Columns + col).number() > m_max;
}

void Grid::Refresh() {
    SnapToValidCell(m_cell.row, m_cell.col);
}

void Grid::Reset() {
    m_cell = {};
    m_previous = {};
    EnterCellAt(0, 0);
}

void Grid::SelectCell(int row, int col) {
    EnterCellAt(row, col);
}

void Grid::EnterCellAt(int row, int col) {
    if (IsBeyondData(row, col)) {
        m_cell = m_previous;
        return;
    }
    if (!m_keepLeave)
        Q_EMIT LeaveCell(std::min(m_previous.row, m_rows - 1), m_previous.col);
    m_keepLeave = false;
    setRow(std::min(row, m_rows - 1));
    setCol(col);
    m_previous = m_cell;
    Q_EMIT cursorChanged();
    Q_EMIT EnterCell(m_cell.row, m_cell.col);
}

bool Grid::SnapToValidCell(int row, int col) {
    if (!IsBeyondData(row, col))
        return false;
    for (int r = row; r >= 0; --r) {
        for (int c = col; c >= 0; --c) {
            if (IsBeyondData(r, c))
                continue;
            EnterCellAt(r, c);
            return true;
        }
    }
    return true;
}

void Grid::snapOrEnter(int row, int col) {
    if (!SnapToValidCell(row, col))
        goTo(row, col);
}

void Grid::goTo(int row, int col) {
    m_cell = {row, col};
    EnterCellAt(row, col);
}

void Grid::page(Request request) {
    Q_EMIT LeaveCell(m_previous.row, m_previous.col);
    if (m_hasFocus)
        Q_EMIT(this->*request)();
    m_keepLeave = true;
}

bool Grid::isControl(Qt::KeyboardModifiers modifiers) {
    return (modifiers & ~Qt::KeypadModifier) == Qt::ControlModifier;
}

bool Grid::pressKey(int key, Qt::KeyboardModifiers modifiers) {
    struct Rule {
        int key;
        void (Grid::*press)(Qt::KeyboardModifiers);
    };
    static constexpr Rule Rules[] = {
        {Qt::Key_Down, &Grid::pressDown},         {Qt::Key_Up, &Grid::pressUp},
        {Qt::Key_Left, &Grid::pressLeft},         {Qt::Key_Right, &Grid::pressRight},
        {Qt::Key_PageDown, &Grid::pressPageDown}, {Qt::Key_PageUp, &Grid::pressPageUp},
        {Qt::Key_Home, &Grid::pressHome},         {Qt::Key_End, &Grid::pressEnd},
    };
    const auto* rule = std::find_if(std::begin(Rules), std::end(Rules), [&](const Rule& r) { return r.key == key; });
    if (rule == std::end(Rules))
        return false;
    (this->*rule->press)(modifiers);
    m_keepLeave = false;  // of this key alone, also when it found no cell to go to
    return true;
}

void Grid::pressDown(Qt::KeyboardModifiers) {
    if (m_cell.row + 1 < m_rows)
        return goTo(m_cell.row + 1, m_cell.col);
    if ((m_pointer + m_rows * Columns).number() > m_max)
        return;
    page(&Grid::RequestNextRow);
    snapOrEnter(m_cell.row, m_cell.col);
}

void Grid::pressUp(Qt::KeyboardModifiers) {
    if (m_cell.row - 1 >= 0)
        return goTo(m_cell.row - 1, m_cell.col);
    if (m_pointer.number() <= 1)
        return;
    page(&Grid::RequestPreviousRow);
    goTo(m_cell.row, m_cell.col);
}

void Grid::pressLeft(Qt::KeyboardModifiers) {
    if (m_cell.col - 1 >= 0)
        return goTo(m_cell.row, m_cell.col - 1);
    if (m_cell.row - 1 >= 0)
        return goTo(m_cell.row - 1, Columns - 1);
    if (m_pointer.number() <= 1)
        return;
    page(&Grid::RequestPreviousRow);
    goTo(0, Columns - 1);
}

void Grid::pressRight(Qt::KeyboardModifiers) {
    if (m_cell.col + 1 < Columns)
        return goTo(m_cell.row, m_cell.col + 1);
    if (m_cell.row + 1 < m_rows)
        return goTo(m_cell.row + 1, 0);
    if ((m_pointer + (m_cell.col + 1) * m_rows).number() >= m_max)
        return;
    page(&Grid::RequestNextRow);
    snapOrEnter(m_cell.row, 0);
}

void Grid::pressPageDown(Qt::KeyboardModifiers modifiers) {
    if (isControl(modifiers))
        return goTo(m_rows - 1, m_cell.col);
    page(&Grid::RequestNextPage);
    snapOrEnter(m_cell.row, m_cell.col);
}

void Grid::pressPageUp(Qt::KeyboardModifiers modifiers) {
    if (isControl(modifiers))
        return goTo(0, m_cell.col);
    page(&Grid::RequestPreviousPage);
    goTo(m_cell.row, m_cell.col);
}

void Grid::pressHome(Qt::KeyboardModifiers modifiers) {
    if (!isControl(modifiers))
        return goTo(m_cell.row, 0);
    m_cell = {};
    page(&Grid::RequestBOF);
    goTo(0, 0);
}

void Grid::pressEnd(Qt::KeyboardModifiers modifiers) {
    if (!isControl(modifiers))
        return goTo(m_cell.row, Columns - 1);
    m_cell = {m_rows - 1, Columns - 1};
    page(&Grid::RequestEOF);
    snapOrEnter(m_cell.row, m_cell.col);
}

void Grid::pressMouse(int row, int col) {
    const HexCell pressed{std::min(row, m_rows - 1), col};
    Q_EMIT Click();
    if (row < 0 || col < 0 || IsBeyondData(pressed.row, pressed.col) || pressed == m_cell)
        return;
    goTo(pressed.row, pressed.col);
}
