#include "keys/MacroStore.h"

#include "editor/control/CommandNumbers.h"
#include "keys/HotKeys.h"
#include "platform/Folders.h"
#include "settings/SettingText.h"
#include "settings/files/OwnTextFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

bool isIndex(int index) {
    return index >= 0 && index < MacroStore::Slots;
}

/// The index of a macro by the name of its file.
std::optional<int> indexOf(const QString& name) {
    const qsizetype dot = name.indexOf(u'.');
    const auto number = dot < 0 ? std::nullopt : SettingText::toLong(name.left(dot));
    return number && isIndex(*number) ? number : std::nullopt;
}

}  // namespace

MacroStore::MacroStore(RegistryStore& registry, HotKeys& hotKeys, const QString& programFolder)
    : m_registry(registry), m_hotKeys(hotKeys), m_settings(registry), m_programFolder(programFolder) {}

QString MacroStore::folder() const {
    return m_programFolder + QLatin1String("/macros");
}

/// The bytes are parsed once: another macro may play this one ten thousand times.
const std::optional<Macro>& MacroStore::macro(int index) const {
    static const std::optional<Macro> none;
    if (!isIndex(index))
        return none;
    if (!m_macros[index])
        m_macros[index] = Macro::fromBytes(m_bytes[index]);
    return *m_macros[index];
}

void MacroStore::setBytes(int index, const QByteArray& bytes) {
    m_bytes[index] = bytes;
    m_macros[index].reset();
}

bool MacroStore::setMacro(int index, const Macro& macro) {
    const QByteArray bytes = macro.toBytes();
    if (!isIndex(index) || bytes.size() > Macro::MostBytes)
        return false;
    setBytes(index, bytes);
    return true;
}

std::optional<int> MacroStore::freeSlot() const {
    for (int n = 1; n <= Slots; ++n) {
        if (m_hotKeys.HotKeyText(QString::number(n)).isEmpty())
            return n;
    }
    return std::nullopt;
}

QString MacroStore::nameOf(int n) const {
    return m_settings.PropertyValue(QString::number(n) + QLatin1String("Desc"), QString(), false);
}

void MacroStore::SaveMacros() {
    m_hotKeys.save(m_registry);
    makeFolder(folder());
    for (int index = 0; index < Slots; ++index)
        SaveMacroFile(folder() + u"/%1.dem"_qs.arg(index), index);
}

bool MacroStore::SaveMacroFile(const QString& pFilename, int pIndex) {
    if (!isIndex(pIndex) || m_bytes[pIndex].isEmpty())
        return false;
    const QFileInfo there(pFilename);
    if (there.exists() && !there.isFile())
        return false;
    // Opened for reading too, because a file that is opened for writing alone is truncated.
    QFile file(pFilename);
    const QByteArray& bytes = m_bytes[pIndex];
    return file.open(QIODevice::ReadWrite) && file.write(bytes) == bytes.size() && file.flush();
}

void MacroStore::LoadMacros() {
    for (const QFileInfo& file : QDir(folder()).entryInfoList(QDir::Files, QDir::Name)) {
        if (!file.fileName().endsWith(QLatin1String("dem")))
            continue;
        const auto index = indexOf(file.fileName());
        if (!index || !LoadMacroFile(file.filePath(), *index))
            return;
    }
}

bool MacroStore::LoadMacroFile(const QString& pFilename, int pIndex) {
    if (!isIndex(pIndex))
        return false;
    const OwnTextFile::Content file = OwnTextFile::read(pFilename, Macro::MostBytes);
    if (!file.error)
        setBytes(pIndex, file.bytes);
    return !file.error || file.isTooLong();
}

void MacroStore::DeleteMacro(int n) {
    if (!isIndex(n - 1))
        return;
    for (const HotKey& hotKey : m_hotKeys.hotKeysOf(Command::MacroBase + n))
        m_hotKeys.remove(hotKey);
    forgetNameOf(n);
    SaveMacros();
}

void MacroStore::ResetHotKeys() {
    m_hotKeys.reset();
    for (int n = 1; n <= Slots; ++n)
        forgetNameOf(n);
    SaveMacros();
}

void MacroStore::forgetNameOf(int n) {
    setDisplayOf(n, false);
    setNameOf(n, {});
}

void MacroStore::setNameOf(int n, const QString& name) {
    m_settings.write(QString::number(n) + QLatin1String("Desc"), name);
}

void MacroStore::setDisplayOf(int n, bool on) {
    m_settings.write(QString::number(n) + QLatin1String("Display"), QString::number(on ? 1 : 0));
}
