#include "hex/grid/GridAccessible.h"

#include "hex/bytes/HexText.h"
#include "hex/grid/Grid.h"
#include "hex/grid/GridCellAccessible.h"
#include "hex/grid/GridPane.h"

namespace {

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    if (className != QLatin1String("GridPane"))
        return nullptr;
    return new GridAccessible(qobject_cast<GridPane*>(object));
}

int indexOf(HexCell cell) {
    return cell.row * Grid::Columns + cell.col;
}

void tellQt(QAccessibleEvent* event) {
    if (QAccessible::isActive())
        QAccessible::updateAccessibility(event);
}

QAccessible::UpdateHandler handler = tellQt;

void tellOf(QAccessibleEvent& event, HexCell cell) {
    event.setChild(indexOf(cell));
    handler(&event);
}

void tell(GridPane& pane, QAccessible::Event what, HexCell cell) {
    QAccessibleEvent event(&pane, what);
    tellOf(event, cell);
}

}  // namespace

GridAccessible::GridAccessible(GridPane* pane) : QAccessibleWidget(pane, QAccessible::Table) {}

GridAccessible::~GridAccessible() {
    for (const QAccessible::Id id : std::as_const(m_cells))
        QAccessible::deleteAccessibleInterface(id);
}

void GridAccessible::install() {
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed)
}

void GridAccessible::tellThrough(QAccessible::UpdateHandler to) {
    handler = to == nullptr ? tellQt : to;
}

void GridAccessible::caretMoved(GridPane& pane) {
    // While a page is filled the cursor may stand where it has no row any more.
    if (pane.hasFocus() && pane.grid().cell().row < pane.grid().Rows())
        tell(pane, QAccessible::Focus, pane.grid().cell());
}

void GridAccessible::cellChanged(GridPane& pane, HexCell cell) {
    tell(pane, QAccessible::NameChanged, cell);
    QAccessibleValueChangeEvent event(&pane, pane.grid().Value(cell.row, cell.col));
    tellOf(event, cell);
}

void GridAccessible::pageChanged(GridPane& pane) {
    QAccessibleTableModelChangeEvent event(&pane, QAccessibleTableModelChangeEvent::ModelReset);
    handler(&event);
    caretMoved(pane);
}

const GridPane& GridAccessible::pane() const {
    return *static_cast<const GridPane*>(widget());
}

const Grid& GridAccessible::grid() const {
    return pane().grid();
}

void* GridAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessibleInterface* GridAccessible::child(int index) const {
    if (index < 0 || index >= childCount())
        return nullptr;
    const auto kept = m_cells.constFind(index);
    if (kept != m_cells.constEnd())
        return QAccessible::accessibleInterface(*kept);
    auto* cell =
        new GridCellAccessible(static_cast<GridPane*>(widget()), {index / Grid::Columns, index % Grid::Columns});
    m_cells.insert(index, QAccessible::registerAccessibleInterface(cell));
    return cell;
}

QAccessibleInterface* GridAccessible::childAt(int x, int y) const {
    const std::optional<HexCell> cell = pane().cellAt(pane().mapFromGlobal(QPoint(x, y)));
    return cell ? cellAt(cell->row, cell->col) : nullptr;
}

QAccessibleInterface* GridAccessible::focusChild() const {
    return pane().hasFocus() ? child(indexOf(grid().cell())) : nullptr;
}

int GridAccessible::childCount() const {
    return grid().Rows() * Grid::Columns;
}

int GridAccessible::indexOfChild(const QAccessibleInterface* child) const {
    if (child == nullptr || child->role() != QAccessible::Cell)
        return -1;
    return indexOf(static_cast<const GridCellAccessible*>(child)->cell());
}

QAccessibleInterface* GridAccessible::cellAt(int row, int column) const {
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
        return nullptr;
    return child(indexOf({row, column}));
}

QString GridAccessible::columnDescription(int column) const {
    return HexText::ByteToHexCell(column);
}

QString GridAccessible::rowDescription(int row) const {
    return HexText::FormatOffset(Offset(grid().Pointer() + row * Grid::Columns), true);
}

int GridAccessible::columnCount() const {
    return Grid::Columns;
}

int GridAccessible::rowCount() const {
    return grid().Rows();
}

QList<QAccessibleInterface*> GridAccessible::selectedCells() const {
    QAccessibleInterface* const cell = child(indexOf(grid().cell()));
    return cell == nullptr ? QList<QAccessibleInterface*>() : QList<QAccessibleInterface*>{cell};
}
