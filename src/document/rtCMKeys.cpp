// Keys that mean a search of the text view.

#include "document/EditorGlobals.h"
#include "document/rtCM.h"

#include <QKeyEvent>

/// Keys that are used by no menu and assigned to no command. F3 opens the replace dialog with any modifier, so that
/// Alt+F3 opens both.
bool rtCM::eventFilter(QObject* watched, QEvent* event) {
    if (watched != focusProxy() || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (IgnoreCmdFailure && key.key() == Qt::Key_Escape) {
        StopSearch();
        return true;
    }
    if (m_globals.control.isBound(key))
        return false;
    const bool ctrl = key.modifiers() == Qt::ControlModifier;
    const bool f3 = key.key() == Qt::Key_F3;
    const bool finds = (ctrl && key.key() == Qt::Key_F) || (f3 && key.modifiers() == Qt::AltModifier);
    const bool replaces = (ctrl && key.key() == Qt::Key_H) || f3;
    if (finds)
        Find();
    if (replaces)
        ReplaceText();
    return finds || replaces || QWidget::eventFilter(watched, event);
}
