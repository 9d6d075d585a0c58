#include "keys/MacroStore.h"

#include "editor/control/CommandNumbers.h"
#include "keys/HotKeys.h"
#include "platform/FileErrors.h"
#include "platform/Folders.h"
#include "platform/UserFileWriter.h"
#include "settings/SettingText.h"
#include "settings/files/OwnTextFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace {

bool isIndex(int index) {
    return index >= 0 && index < MacroStore::Slots;
}

/// The text before the first dot of a file's name; empty without a dot.
QString stemOf(const QString& name) {
    return name.left(std::max<qsizetype>(name.indexOf(u'.'), 0));
}

SystemError unlessWritable(const QFileInfo& file) {
    if (!file.exists() || file.isFile())
        return {};
    return FileErrors::unlessRegular(file.isDir() ? S_IFDIR : S_IFIFO);
}

}  // namespace

MacroStore::MacroStore(RegistryStore& registry, HotKeys& hotKeys, const QString& programFolder)
    : m_registry(registry), m_hotKeys(hotKeys), m_settings(registry), m_programFolder(programFolder) {}

QString MacroStore::folder() const {
    return m_programFolder + QLatin1String("/macros");
}

QString MacroStore::fileOf(int index) const {
    return folder() + u"/%1.dem"_qs.arg(index);
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

std::optional<int> MacroStore::lossIn(int n) const {
    enum Loss { None, OtherBytes, AMacro };
    if (!m_hotKeys.HotKeyText(QString::number(n)).isEmpty())
        return std::nullopt;
    if (m_bytes[n - 1].isEmpty())
        return None;
    return macro(n - 1) ? AMacro : OtherBytes;
}

std::optional<int> MacroStore::freeSlot() const {
    std::optional<int> best;
    for (int n = 1; n <= Slots; ++n) {
        if (const auto loss = lossIn(n); loss && (!best || *loss < *lossIn(*best)))
            best = n;
    }
    return best;
}

QString MacroStore::nameOf(int n) const {
    return m_settings.PropertyValue(QString::number(n) + QLatin1String("Desc"), QString(), false);
}

void MacroStore::SaveMacros() {
    m_hotKeys.save(m_registry);
    makeFolder(folder());
    for (int index = 0; index < Slots; ++index)
        SaveMacroFile(fileOf(index), index);
}

SystemError MacroStore::saveSlot(int n) {
    static constexpr const char* NoHotKey = QT_TRANSLATE_NOOP("MacroStore", "The hot key can't be stored.");
    if (!m_hotKeys.save(m_registry))
        return {EIO, QCoreApplication::translate("MacroStore", NoHotKey)};
    if (const SystemError error = makeFolder(folder()))
        return FileErrors::writing(folder(), error);
    return write(fileOf(n - 1), n - 1);
}

bool MacroStore::SaveMacroFile(const QString& pFilename, int pIndex) {
    return isIndex(pIndex) && !m_bytes[pIndex].isEmpty() && !write(pFilename, pIndex);
}

SystemError MacroStore::write(const QString& path, int index) const {
    if (const SystemError error = unlessWritable(QFileInfo(path)))
        return FileErrors::writing(path, error);
    // Old bytes after the new ones stay. A file that begins with the new ones need not be written.
    const QByteArray& bytes = m_bytes[index];
    const OwnTextFile::Content before = OwnTextFile::readHead(path, bytes.size());
    if (!before.error && before.bytes == bytes)
        return {};
    const std::string_view piece(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return UserFileWriter().write(path, {&piece, 1}, UserFileWriter::Tail::Keep).error;
}

void MacroStore::LoadMacros() {
    for (const QFileInfo& file : QDir(folder()).entryInfoList(QDir::Files, QDir::Name)) {
        if (!file.fileName().endsWith(QLatin1String("dem")))
            continue;
        const QString stem = stemOf(file.fileName());
        if (!SettingText::toNumber(stem))
            return;
        const int index = SettingText::toLong(stem).value_or(Slots);
        if (isIndex(index) && !LoadMacroFile(file.filePath(), index))
            return;
    }
}

bool MacroStore::LoadMacroFile(const QString& pFilename, int pIndex) {
    if (!isIndex(pIndex))
        return false;
    const OwnTextFile::Content file = OwnTextFile::readHead(pFilename, Macro::MostBytes);
    if (!file.error)
        setBytes(pIndex, file.bytes);
    return !file.error;
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
