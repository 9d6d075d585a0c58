#include "keys/MenuKeys.h"

#include "keys/KeyNames.h"

#include <QAction>
#include <QKeySequence>
#include <QMenuBar>
#include <QShortcut>
#include <QWidget>

namespace {

bool stands(const QKeySequence& sequence, const HotKeyStroke& stroke) {
    return sequence.count() == 1 && KeyNames::strokeOf(sequence[0].key(), sequence[0].keyboardModifiers()) == stroke;
}

QString plain(const QString& caption) {
    return QString(caption).remove(u'&').remove(u"..."_qs);
}

}  // namespace

QString MenuKeys::commandOf(const HotKeyStroke& stroke, const QWidget& widget) {
    const QWidget* window = widget.window();
    for (const QAction* action : window->findChildren<QAction*>()) {
        if (action->isEnabled() && stands(action->shortcut(), stroke))
            return plain(action->text());
    }
    for (const QMenuBar* bar : window->findChildren<QMenuBar*>()) {
        for (const QAction* menu : bar->actions()) {
            if (menu->isEnabled() && menu->isVisible() && stands(QKeySequence::mnemonic(menu->text()), stroke))
                return plain(menu->text());
        }
    }
    for (const QShortcut* shortcut : window->findChildren<QShortcut*>()) {
        if (shortcut->isEnabled() && stands(shortcut->key(), stroke))
            return shortcut->whatsThis().isEmpty() ? QShortcut::tr("a window command") : shortcut->whatsThis();
    }
    return {};
}
