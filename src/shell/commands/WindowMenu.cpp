#include "shell/commands/WindowMenu.h"

#include "document/frmDocument.h"
#include "shell/documents/MdiChildren.h"

#include <QMenu>
#include <QPointer>

namespace {

constexpr qsizetype ListLength = 9;

QString entryText(qsizetype number, QString caption) {
    return u"&%1 "_qs.arg(number) + caption.replace(u'&', QLatin1String("&&"));
}

}  // namespace

WindowMenu::WindowMenu(QMenu& menu, MdiChildren& children) : QObject(&menu), m_menu(menu), m_children(children) {
    connect(&menu, &QMenu::aboutToShow, this, &WindowMenu::refill);
}

/// The first ones; an active document that is not among them gets the last place.
QList<frmDocument*> WindowMenu::listedDocuments() const {
    QList<frmDocument*> listed = m_children.documents().first(qMin(m_children.documents().size(), ListLength));
    if (m_children.active() != nullptr && !listed.contains(m_children.active()))
        listed.last() = m_children.active();
    return listed;
}

void WindowMenu::refill() {
    qDeleteAll(m_added);
    m_added.clear();
    if (m_children.documents().isEmpty())
        return;
    m_added.append(m_menu.addSeparator());
    const QList<frmDocument*> listed = listedDocuments();
    for (qsizetype i = 0; i < listed.size(); ++i) {
        const QPointer<frmDocument> document(listed.at(i));
        QAction* action = m_menu.addAction(entryText(i + 1, document->Caption()));
        action->setObjectName(u"mnuWindowList(%1)"_qs.arg(i + 1));
        action->setCheckable(true);
        action->setChecked(document == m_children.active());
        connect(action, &QAction::triggered, this, [this, document] { m_children.bringToFront(document); });
        m_added.append(action);
    }
}
