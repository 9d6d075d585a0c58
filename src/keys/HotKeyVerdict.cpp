#include "keys/HotKeyVerdict.h"

#include "editor/control/CommandNumbers.h"
#include "keys/HotKeys.h"
#include "keys/KeyNames.h"
#include "keys/MacroStore.h"

#include <QCoreApplication>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("HotKeyVerdict", text);
}

/// Whether the user needs the stroke for typing: letters, digits, Space, Tab and Backspace without Ctrl or Alt.
bool isTyped(const HotKeyStroke& stroke) {
    constexpr int KeepsTyping = HotKeyStroke::Ctrl | HotKeyStroke::Alt;
    if ((stroke.modifiers & KeepsTyping) != 0 || stroke.key.isEmpty())
        return false;
    const char16_t code = stroke.key.front().unicode();
    const bool letter = code >= u'A' && code <= u'Z';
    const bool digit = code >= u'0' && code <= u'9';
    return letter || digit || code == u' ' || code == u'\t' || code == u'\b';
}

}  // namespace

QString commandName(int command, const MacroStore& macros) {
    const int n = command - Command::MacroBase;
    const QString name = n >= 1 && n <= Command::Macros ? macros.nameOf(n) : QString();
    return name.isEmpty() ? Command::captionOf(command) : name;
}

HotKeyVerdict HotKeyVerdict::of(const HotKey& hotKey, int command, const HotKeys& hotKeys, const MacroStore& macros,
                                const MenuCommand& menuCommand) {
    if (hotKey.first.key.isEmpty())
        return {};
    const QString first = KeyNames::text(hotKey.first);
    if (isTyped(hotKey.first))
        return {false, tr("%1 is needed for typing. Hold Ctrl or Alt with it.").arg(first)};
    if (const QString owner = menuCommand(hotKey.first); !owner.isEmpty())
        return {false, tr("%1 belongs to \"%2\" of the menus, which comes first.").arg(first, owner)};
    QStringList losers;
    for (const HotKeys::Binding& binding : hotKeys.collisionsOf(hotKey)) {
        if (binding.command != command)
            losers << tr("\"%1\" (%2)").arg(commandName(binding.command, macros), KeyNames::text(binding.hotKey));
    }
    if (losers.isEmpty())
        return {true, {}};
    return {true, tr("This hot key will be taken away from %1.").arg(losers.join(u", "_qs))};
}
