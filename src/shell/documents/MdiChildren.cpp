#include "shell/documents/MdiChildren.h"

#include "document/frmDocument.h"
#include "shell/documents/ChildWindow.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include <algorithm>

MdiChildren::MdiChildren(QMdiArea& area) : QObject(&area), m_area(area) {
    area.setActivationOrder(QMdiArea::ActivationHistoryOrder);
    connect(&area, &QMdiArea::subWindowActivated, this, &MdiChildren::windowActivated);
}

void MdiChildren::add(frmDocument* document) {
    m_documents.append(document);
    auto* window = new ChildWindow;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWidget(document);
    m_area.addSubWindow(window);
    window->setWindowIcon(document->windowIcon());
    connect(document, &QWidget::windowIconChanged, window, &QWidget::setWindowIcon);
    // The frame has its own keys for closing and switching windows; two owners of one key would cancel each other.
    for (QAction* action : window->systemMenu()->actions())
        action->setShortcuts(QList<QKeySequence>());
    window->show();
    document->setFocus();  // otherwise the window would focus the first child of the two views
    bringToFront(document);
}

void MdiChildren::remove(frmDocument* document) {
    m_documents.removeOne(document);
    if (m_active == document)
        m_active = nullptr;
}

frmDocument* MdiChildren::byKey(const QString& key) const {
    const auto found = std::ranges::find_if(m_documents, [&](const frmDocument* each) { return each->fIdx == key; });
    return found == m_documents.end() ? nullptr : *found;
}

QMdiSubWindow* MdiChildren::windowOf(const frmDocument* document) const {
    return document == nullptr ? nullptr : qobject_cast<QMdiSubWindow*>(document->parentWidget());
}

QList<QMdiSubWindow*> MdiChildren::windowsByOrder() const {
    return m_area.subWindowList(QMdiArea::ActivationHistoryOrder);
}

void MdiChildren::bringToFront(frmDocument* document) {
    QMdiSubWindow* window = windowOf(document);
    if (window == nullptr)
        return;
    if (window->isMinimized())
        window->showNormal();
    m_area.setActiveSubWindow(window);
    setActive(document);  // the area is silent while it is hidden
}

void MdiChildren::maximise(frmDocument* document) {
    if (QMdiSubWindow* window = windowOf(document))
        window->showMaximized();
}

ChildWindow* MdiChildren::childOf(const frmDocument* document) const {
    return qobject_cast<ChildWindow*>(windowOf(document));
}

ChildPlace MdiChildren::placeOf(const frmDocument* document) const {
    const ChildWindow* window = childOf(document);
    return window == nullptr ? ChildPlace{} : window->place();
}

void MdiChildren::setPlace(const frmDocument* document, const ChildPlace& place) {
    if (ChildWindow* window = childOf(document))
        window->setPlace(place);
}

void MdiChildren::setState(const frmDocument* document, ChildState state) {
    if (ChildWindow* window = childOf(document))
        window->setState(state);
}

void MdiChildren::unload(frmDocument* document) {
    if (QMdiSubWindow* window = windowOf(document))
        window->close();
    if (m_active == nullptr && !m_documents.isEmpty())
        bringToFront(m_documents.last());
}

void MdiChildren::activateNeighbour(int step) {
    const qsizetype count = m_documents.size();
    if (count < 2)
        return;
    const qsizetype present = m_documents.indexOf(m_active);
    bringToFront(m_documents.at((present + step + count) % count));
}

void MdiChildren::windowActivated(QMdiSubWindow* window) {
    if (window != nullptr)
        setActive(qobject_cast<frmDocument*>(window->widget()));
}

void MdiChildren::setActive(frmDocument* document) {
    if (document == m_active || !m_documents.contains(document))
        return;
    m_active = document;
    Q_EMIT activated(document);
}
