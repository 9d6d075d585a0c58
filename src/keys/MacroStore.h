#pragma once

#include "keys/Macro.h"
#include "platform/SystemError.h"
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
/// The bytes of a file are kept unchanged, even if they are not valid; of a file that is longer than a macro can be,
/// only the first part is read. A file is overwritten and never truncated, so the old bytes after a shorter macro stay
/// and are read again. Failures show no message.
class MacroStore {
 public:
    static constexpr int Slots = 10;

    MacroStore(RegistryStore& registry, HotKeys& hotKeys, const QString& programFolder);

    /// Nothing for an index that does not exist, and for bytes that are no macro.
    const std::optional<Macro>& macro(int index) const;
    /// Replaces the macro; false, and nothing changed, for an index out of range or a macro that is too long.
    bool setMacro(int index, const Macro& macro);
    /// Returns the slot, from 1, for a new macro: one without a hot key, if possible without bytes, or at least without
    /// a macro. Nothing if all slots have hot keys.
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
    /// Saves the hot keys and the macro of slot `n`. An error says what could not be written, for the user.
    SystemError saveSlot(int n);
    /// True if there was something to write and all of it was written.
    bool SaveMacroFile(const QString& pFilename, int pIndex);
    /// Reads the folder in the order of the names, up to the first that is no number or can't be read. Numbers that are
    /// no index are skipped.
    void LoadMacros();
    /// False: the file can't be read or the index is out of range.
    bool LoadMacroFile(const QString& pFilename, int pIndex);

    /// Removes the hot key of slot `n`, its name and its place in the menu, and saves. The bytes stay.
    void DeleteMacro(int n);
    /// Resets all hot keys to the defaults, clears the names of all slots, and saves.
    void ResetHotKeys();

 private:
    void setBytes(int index, const QByteArray& bytes);
    /// Returns how much would be lost in slot `n` by a new macro; nothing if the slot has a hot key.
    std::optional<int> lossIn(int n) const;
    QString folder() const;
    QString fileOf(int index) const;
    SystemError write(const QString& path, int index) const;

    RegistryStore& m_registry;
    HotKeys& m_hotKeys;
    mutable Settings m_settings;  ///< its reads change nothing
    QString m_programFolder;
    std::array<QByteArray, Slots> m_bytes;
    /// The parsed bytes; empty: not parsed yet.
    mutable std::array<std::optional<std::optional<Macro>>, Slots> m_macros;
};
