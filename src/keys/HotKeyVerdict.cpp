#include "keys/HotKeyVerdict.h"

#include "editor/control/CommandNumbers.h"
#include "keys/HotKeys.h"
#include "keys/KeyNames.h"
#include "keys/MacroStore.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("HotKeyVerdict", text);
}

/// Whether the command plays a macro that would have no hot key left without those that collide with a new one.
bool losesItsLast(int command, const HotKey& newKey, const HotKeys& hotKeys) {
    if (!Command::isMacro(command))
        return false;
    const QList<HotKey> its = hotKeys.hotKeysOf(command);
    return std::ranges::all_of(its, [&](const HotKey& one) { return one.collidesWith(newKey); });
}

QString lossOf(const QStringList& losers, const QStringList& deleted) {
    if (losers.isEmpty())
        return {};
    const QString loss = tr("This hot key will be taken away from %1.").arg(losers.join(u", "_qs));
    if (deleted.isEmpty())
        return loss;
    return loss + u' ' + tr("No hot key is left to %1, which will be deleted.").arg(deleted.join(u", "_qs));
}

}  // namespace

QString commandName(int command, const MacroStore& macros) {
    const QString name = Command::isMacro(command) ? macros.nameOf(command - Command::MacroBase) : QString();
    return name.isEmpty() ? Command::captionOf(command) : name;
}

HotKeyVerdict HotKeyVerdict::of(const HotKey& hotKey, int command, const HotKeys& hotKeys, const MacroStore& macros,
                                const MenuCommand& menuCommand) {
    if (hotKey.first.key.isEmpty())
        return {};
    const QString first = KeyNames::text(hotKey.first);
    if (KeyNames::isTyped(hotKey.first))
        return {false, tr("%1 is needed for typing. Hold Ctrl or Alt with it.").arg(first)};
    if (const QString owner = menuCommand(hotKey.first); !owner.isEmpty())
        return {false, tr("%1 belongs to \"%2\" of the menus, which comes first.").arg(first, owner)};
    QStringList losers;
    QStringList deleted;
    for (const HotKeys::Binding& binding : hotKeys.collisionsOf(hotKey)) {
        if (binding.command == command)
            continue;
        const QString name = u"\"%1\""_qs.arg(commandName(binding.command, macros));
        losers << tr("%1 (%2)").arg(name, KeyNames::text(binding.hotKey));
        if (losesItsLast(binding.command, hotKey, hotKeys) && !deleted.contains(name))
            deleted << name;
    }
    return {true, lossOf(losers, deleted)};
}
