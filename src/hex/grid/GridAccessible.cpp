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

void reportToQt(QAccessibleEvent* event) {
    if (QAccessible::isActive())
        QAccessible::updateAccessibility(event);
}

QAccessible::UpdateHandler handler = reportToQt;

void reportOf(QAccessibleEvent& event, HexCell cell) {
    event.setChild(indexOf(cell));
    handler(&event);
}

void report(GridPane& pane, QAccessible::Event what, HexCell cell) {
    QAccessibleEvent event(&pane, what);
    reportOf(event, cell);
}

void cursorMoved(GridPane& pane) {
    // While a page is filled the cursor may be below its last row.
    if (pane.hasFocus() && pane.grid().cell().row < pane.grid().Rows())
        report(pane, QAccessible::Focus, pane.grid().cell());
}

void cellChanged(GridPane& pane, HexCell cell) {
    report(pane, QAccessible::NameChanged, cell);
    QAccessibleValueChangeEvent event(&pane, pane.grid().Value(cell.row, cell.col));
    reportOf(event, cell);
}

void pageChanged(GridPane& pane) {
    QAccessibleTableModelChangeEvent event(&pane, QAccessibleTableModelChangeEvent::ModelReset);
    handler(&event);
    cursorMoved(pane);
}

void install() {
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed)
}

}  // namespace

GridAccessible::GridAccessible(GridPane* pane) : QAccessibleWidget(pane, QAccessible::Table) {}

GridAccessible::~GridAccessible() {
    for (const QAccessible::Id id : std::as_const(m_cells))
        QAccessible::deleteAccessibleInterface(id);
}

void GridAccessible::follow(GridPane& pane) {
    install();
    QObject::connect(&pane, &GridPane::cursorMoved, &pane, [&pane] { cursorMoved(pane); });
    QObject::connect(&pane, &GridPane::cellChanged, &pane, [&pane](int row, int col) {
        cellChanged(pane, {row, col});
    });
    QObject::connect(&pane, &GridPane::pageChanged, &pane, [&pane] { pageChanged(pane); });
}

void GridAccessible::reportTo(QAccessible::UpdateHandler to) {
    handler = to == nullptr ? reportToQt : to;
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
