#include "workspace/panel/OpenFilesView.h"

#include "widgets/RowInput.h"

#include <QMouseEvent>

#include <algorithm>
#include <functional>

OpenFilesView::OpenFilesView(QWidget* parent) : QListView(parent) {
    setObjectName(u"lvOpen"_qs);
    setAccessibleName(u"Open files"_qs);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
    setIconSize(QSize(16, 16));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideMiddle);
    setFrameShape(NoFrame);
    connect(this, &QListView::doubleClicked, this, &OpenFilesView::rowChosen);
    auto* input = new RowInput(*this);
    input->onKeys({Qt::Key_Return, Qt::Key_Enter}, [this] {
        if (currentIndex().isValid())
            Q_EMIT rowChosen(currentIndex());
    });
    input->onKeys({Qt::Key_Delete}, [this] { Q_EMIT deletePressed(); });
    connect(input, &RowInput::menuWanted, this, &OpenFilesView::menuWanted);
}

QList<int> OpenFilesView::selectedRows() const {
    QList<int> rows;
    for (const QModelIndex& each : selectionModel()->selectedRows())
        rows.append(each.row());
    std::ranges::sort(rows, std::greater<>());
    return rows;
}

void OpenFilesView::mousePressEvent(QMouseEvent* event) {
    m_lastButton = event->button();
    QListView::mousePressEvent(event);
}
