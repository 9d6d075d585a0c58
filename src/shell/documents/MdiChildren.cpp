#include "shell/documents/MdiChildren.h"

#include "document/frmDocument.h"
#include "shell/documents/ChildWindow.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include <algorithm>

namespace {

/// Stands around a change of the active child. Where a child is maximised, the area maximises the next one by a call
/// that requests the keyboard for the frame. While the user works in another program, this object does it without that.
class QuietChange {
 public:
    QuietChange(const MdiChildren& children, ChildWindow* active) : m_children(children), m_area(children.area()) {
        if (active == nullptr || !active->isMaximized() || !m_area.isVisible() || m_area.isActiveWindow())
            return;
        m_maximises = true;
        m_updates = m_area.updatesEnabled();
        m_area.setUpdatesEnabled(false);
        active->setState(ChildState::Normal);
    }
    ~QuietChange() {
        if (!m_maximises)
            return;
        m_children.setState(m_children.active(), ChildState::Maximised);
        m_area.setUpdatesEnabled(m_updates);
    }
    Q_DISABLE_COPY_MOVE(QuietChange)

 private:
    const MdiChildren& m_children;
    QMdiArea& m_area;
    bool m_maximises = false;
    bool m_updates = false;
};

}  // namespace

MdiChildren::MdiChildren(QMdiArea& area) : QObject(&area), m_area(area) {
    area.setActivationOrder(QMdiArea::ActivationHistoryOrder);
    connect(&area, &QMdiArea::subWindowActivated, this, &MdiChildren::windowActivated);
}

void MdiChildren::add(frmDocument* document) {
    m_documents.append(document);
    const QuietChange quiet(*this, childOf(m_active));
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
    ChildWindow* window = childOf(document);
    if (window == nullptr)
        return;
    const QuietChange quiet(*this, document == m_active ? nullptr : childOf(m_active));
    if (window->isMinimized())
        window->setState(ChildState::Normal);
    m_area.setActiveSubWindow(window);
    setActive(document);  // the area is silent while it is hidden
}

void MdiChildren::maximise(const frmDocument* document) {
    setState(document, ChildState::Maximised);
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

void MdiChildren::setState(const frmDocument* document, ChildState state) const {
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
