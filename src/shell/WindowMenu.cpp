#include "shell/WindowMenu.h"

#include "document/frmDocument.h"
#include "shell/MdiChildren.h"

#include <QMenu>
#include <QPointer>

namespace {

constexpr qsizetype listLength = 9;

QString entryText(qsizetype number, QString caption) {
    return QStringLiteral("&%1 ").arg(number) + caption.replace(u'&', QLatin1String("&&"));
}

}  // namespace

WindowMenu::WindowMenu(QMenu& menu, MdiChildren& children) : QObject(&menu), m_menu(menu), m_children(children) {
    connect(&menu, &QMenu::aboutToShow, this, &WindowMenu::refill);
}

void WindowMenu::refill() {
    qDeleteAll(m_added);
    m_added.clear();
    const QList<frmDocument*>& documents = m_children.documents();
    if (documents.isEmpty())
        return;
    m_added.append(m_menu.addSeparator());
    for (qsizetype i = 0; i < qMin(documents.size(), listLength); ++i) {
        const QPointer<frmDocument> document(documents.at(i));
        QAction* action = m_menu.addAction(entryText(i + 1, document->Caption()));
        action->setObjectName(QStringLiteral("mnuWindowList(%1)").arg(i + 1));
        action->setCheckable(true);
        action->setChecked(document == m_children.active());
        connect(action, &QAction::triggered, this, [this, document] { m_children.bringToFront(document); });
        m_added.append(action);
    }
}
