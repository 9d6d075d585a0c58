#include "shell/bars/FocusRound.h"

#include "document/frmDocument.h"
#include "shell/bars/FindBar.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/FrameParts.h"

#include <QList>

namespace {

bool holdsFocus(const QWidget* part) {
    const QWidget* focused = part->window()->focusWidget();
    return focused == part || part->isAncestorOf(focused);
}

}  // namespace

void FocusRound::go(const FrameParts& parts, QWidget& tabs, int step) {
    QList<QWidget*> round;
    for (QWidget* part : {static_cast<QWidget*>(parts.children->active()), parts.findBar->widget(), &tabs}) {
        if (part != nullptr && part->isVisible())
            round.append(part);
    }
    if (round.isEmpty())
        return;
    qsizetype present = 0;
    while (present < round.size() && !holdsFocus(round.at(present)))
        ++present;
    const qsizetype next = present == round.size() ? 0 : (present + step + round.size()) % round.size();
    round.at(next)->setFocus(Qt::TabFocusReason);
}
