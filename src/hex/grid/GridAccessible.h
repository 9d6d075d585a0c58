#pragma once

#include "hex/bytes/HexPaging.h"

#include <QAccessibleWidget>
#include <QHash>

class Grid;
class GridPane;

/// A pane for screen readers: a table of sixteen columns whose cells have their offset and their text. Children count
/// row by row. Owned by Qt's cache of accessible objects.
class GridAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
    explicit GridAccessible(GridPane* pane);
    ~GridAccessible() override;

    /// Registers the pane with Qt and reports each change of it from now on.
    static void follow(GridPane& pane);

    /// The receiver of reports, by default Qt while a screen reader listens there. For tests without a desktop; null:
    /// the default again.
    static void reportTo(QAccessible::UpdateHandler handler);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int row) const override;
    int columnCount() const override;
    int rowCount() const override;

    int selectedCellCount() const override { return static_cast<int>(selectedCells().size()); }
    QList<QAccessibleInterface*> selectedCells() const override;
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

 private:
    const GridPane& pane() const;
    const Grid& grid() const;

    mutable QHash<int, QAccessible::Id> m_cells;  ///< those that were requested, by index
};
