#pragma once

#include "hex/bytes/HexPaging.h"

#include <QAccessible>
#include <QPointer>

class Grid;
class GridPane;

/// One cell of a pane for screen readers. It represents a place of the page, whatever byte is shown there. Owned by
/// Qt's cache of accessible objects, and removed from it by the pane's own.
class GridCellAccessible : public QAccessibleInterface,
                           public QAccessibleTableCellInterface,
                           public QAccessibleActionInterface {
 public:
    GridCellAccessible(GridPane* pane, HexCell cell);

    HexCell cell() const { return m_cell; }

    void* interface_cast(QAccessible::InterfaceType type) override;
    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::Cell; }
    QAccessible::State state() const override;

    int columnIndex() const override { return m_cell.col; }
    int rowIndex() const override { return m_cell.row; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    bool isSelected() const override;
    QAccessibleInterface* table() const override { return parent(); }

    QStringList actionNames() const override { return {setFocusAction()}; }
    void doAction(const QString& actionName) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
    Grid& grid() const;

    QPointer<GridPane> m_pane;
    HexCell m_cell;
};
