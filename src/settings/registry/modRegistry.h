#pragma once

#include "settings/registry/RegistryStore.h"

// The module procedures: one value or key at a time, in the store that is passed first. None raises; one that writes or
// deletes returns true on success, which callers may ignore.

/// The key, below the current user's root, that holds all of the program's own.
QString programKey();

/// Creates the key if needed. An empty name is the key's default value.
bool SetRegString(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName,
                  const QString& sValue);
/// The text up to its first zero character; "" when key or value is missing or the value isn't of type string.
QString GetRegString(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName);
bool SetRegDword(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName, qint32 lValue);
/// Deletes the key with everything below it.
bool DeleteRegTree(RegistryStore& store, RegistryRoot hRoot, const QString& sKey);
/// As GetRegString; false when there is no such string.
bool ReadRegValue(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName, QString& sValue);
/// Writes a string, or deletes the value when the text is empty.
bool WriteRegValue(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName,
                   const QString& sValue);
bool DeleteRegKey(RegistryStore& store, RegistryRoot hRoot, const QString& sKey);
/// The same under the frame's name for it: deletes `strKey` below `hkey`. `sKey` has no effect.
bool DeleteKey(RegistryStore& store, RegistryRoot hkey, const QString& strKey, const QString& sKey);
bool DeleteRegValue(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName);
/// The names of the sub-keys of a section of the program's own key; a name of 256 characters or more ends the walk.
bool EnumRegSections(RegistryStore& store, const QString& sSection, QStringList& sNames);
