#pragma once

#include "keys/Macro.h"
#include "settings/Settings.h"

#include <QString>

#include <array>
#include <optional>

class HotKeys;
class RegistryStore;

/// The ten macros as bytes, and their files "0.dem" to "9.dem" in the folder `macros` of the program folder. Owned by
/// the shell; registry and hot keys outlive it. Indices count from 0 as in the file names, slots (`n`) from 1 as in
/// menus and settings: slot n is index n - 1.
///
/// The bytes of a file are kept unchanged, even if they are not valid. A file is overwritten and never truncated, so
/// the old bytes after a shorter macro stay and are read again. Failures show no message.
class MacroStore {
 public:
    static constexpr int Slots = 10;

    MacroStore(RegistryStore& registry, HotKeys& hotKeys, const QString& programFolder);

    /// Nothing for an index that is not there, and for bytes that are no macro.
    const std::optional<Macro>& macro(int index) const;
    /// Replaces the macro; false, and nothing changed, for an index out of range or a macro that is too long.
    bool setMacro(int index, const Macro& macro);
    /// The first slot without a hot key, from 1; nothing when all have one.
    std::optional<int> freeSlot() const;
    /// The name that the user gave to slot `n`; empty: none.
    QString nameOf(int n) const;
    void setNameOf(int n, const QString& name);
    /// Adds slot `n` to the menu, or removes it.
    void setDisplayOf(int n, bool on);
    /// Clears the name of slot `n` and removes it from the menu, because it will contain another macro.
    void forgetNameOf(int n);

    /// Saves hot keys and macros; creates the folder in any case.
    void SaveMacros();
    /// True when there was something to write and all of it was written.
    bool SaveMacroFile(const QString& pFilename, int pIndex);
    /// Reads the folder by the order of the names, up to the first that is no index or can't be read.
    void LoadMacros();
    /// False: the file can't be read or the index is out of range. A file that is too long for a macro is left alone.
    bool LoadMacroFile(const QString& pFilename, int pIndex);

    /// Removes the hot key of slot `n`, its name and its place in the menu, and saves. The bytes stay.
    void DeleteMacro(int n);
    /// Resets all hot keys to the defaults, clears the names of all slots, and saves.
    void ResetHotKeys();

 private:
    void setBytes(int index, const QByteArray& bytes);
    QString folder() const;

    RegistryStore& m_registry;
    HotKeys& m_hotKeys;
    mutable Settings m_settings;  ///< its reads change nothing
    QString m_programFolder;
    std::array<QByteArray, Slots> m_bytes;
    /// The parsed bytes; empty: not parsed yet.
    mutable std::array<std::optional<std::optional<Macro>>, Slots> m_macros;
};
