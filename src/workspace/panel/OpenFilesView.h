#pragma once

#include <QListView>

/// The list of open files: one column, as wide as the view. Owned by its panel.
class OpenFilesView : public QListView {
    Q_OBJECT

 public:
    explicit OpenFilesView(QWidget* parent = nullptr);

    /// The mouse button that was pressed last in the list; none before the first.
    Qt::MouseButton lastButton() const { return m_lastButton; }
    /// From the last row to the first.
    QList<int> selectedRows() const;
    /// -1 when there is none.
    int currentRow() const { return currentIndex().row(); }

 Q_SIGNALS:
    /// The right button was released, or the menu key pressed; in coordinates of the screen.
    void menuWanted(const QPoint& place);
    /// Enter, or a double click on a row.
    void rowChosen(const QModelIndex& row);
    void deletePressed();

 protected:
    void mousePressEvent(QMouseEvent* event) override;

 private:
    Qt::MouseButton m_lastButton = Qt::NoButton;
};
