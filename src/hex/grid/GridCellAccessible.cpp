#include "hex/grid/GridCellAccessible.h"

#include "hex/grid/Grid.h"
#include "hex/grid/GridPane.h"

namespace {

constexpr int OffsetDigits = 8;

QString stateText(bool isChanged, bool isFound) {
    if (isFound)
        return isChanged ? u"Changed, found"_qs : u"Found"_qs;
    return isChanged ? u"Changed"_qs : QString();
}

}  // namespace

GridCellAccessible::GridCellAccessible(GridPane* pane, HexCell cell) : m_pane(pane), m_cell(cell) {}

Grid& GridCellAccessible::grid() const {
    return m_pane->grid();
}

void* GridCellAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface*>(this);
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
}

bool GridCellAccessible::isValid() const {
    return m_pane != nullptr && m_cell.row < grid().Rows();
}

QWindow* GridCellAccessible::window() const {
    const QAccessibleInterface* pane = parent();
    return pane == nullptr ? nullptr : pane->window();
}

QAccessibleInterface* GridCellAccessible::parent() const {
    return QAccessible::queryAccessibleInterface(m_pane);
}

QString GridCellAccessible::text(QAccessible::Text kind) const {
    if (!isValid() || grid().IsBeyondData(m_cell.row, m_cell.col))
        return {};
    const QString value = grid().Value(m_cell.row, m_cell.col);
    if (kind == QAccessible::Value)
        return value;
    if (kind == QAccessible::Description)
        return stateText(m_pane->isMarked(m_cell), m_pane->isFound(m_cell));
    if (kind != QAccessible::Name)
        return {};
    const Offset offset(grid().Pointer() + m_cell.row * Grid::Columns + m_cell.col);
    return u"Offset %1, value %2"_qs.arg(u"%1"_qs.arg(offset.number(), OffsetDigits, 16, QLatin1Char('0')).toUpper(),
                                         value);
}

QRect GridCellAccessible::rect() const {
    if (!isValid())
        return {};
    const QRect cell = m_pane->cellRect(m_cell);
    return {m_pane->mapToGlobal(cell.topLeft()), cell.size()};
}

bool GridCellAccessible::isSelected() const {
    return isValid() && grid().cell() == m_cell;
}

QAccessible::State GridCellAccessible::state() const {
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const bool hasByte = !grid().IsBeyondData(m_cell.row, m_cell.col);
    state.invisible = !hasByte || !m_pane->isVisible();
    state.disabled = !m_pane->isEnabled();
    state.selectable = hasByte;
    state.focusable = hasByte && m_pane->isEnabled();
    state.selected = isSelected();
    state.focused = isSelected() && m_pane->hasFocus();
    state.active = isSelected();
    return state;
}

/// As a click on the cell.
void GridCellAccessible::doAction(const QString& actionName) {
    if (actionName != setFocusAction() || !isValid() || !m_pane->isEnabled())
        return;
    m_pane->setFocus();
    grid().pressMouse(m_cell.row, m_cell.col);
}
