#include "shell/bars/FocusRound.h"

#include <QList>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QWidget>

#include <algorithm>

namespace {

bool holdsFocus(const QWidget* part) {
    const QWidget* focused = part->window()->focusWidget();
    return focused == part || part->isAncestorOf(focused);
}

}  // namespace

void FocusRound::go(std::initializer_list<QWidget*> parts, int step) {
    QList<QWidget*> round;
    for (QWidget* part : parts) {
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

void FocusRound::leave(std::initializer_list<const QWidget*> parts, const QMdiArea& documents) {
    QMdiSubWindow* document = documents.activeSubWindow();
    if (document == nullptr || std::ranges::none_of(parts, holdsFocus))
        return;
    QWidget* heir = document->isMinimized() ? document : document->widget();
    heir->setFocus();
}
