#pragma once

#include <QString>

#include <span>

class RegistryStore;

/// One setting: its key, its section, and the texts that are used while it is missing: for the frame, and for the
/// properties dialog, which differs in two. A null default: the caller must have one.
struct SettingRow {
    const char* key;
    const char* section;
    const char* frameDefault;
    const char* dialogDefault;
};

/// Reads and writes the settings by key; the table below has the section of each. Created by the owner of the store,
/// which must outlive it. Nothing is cached: every read reads the store. Reading writes nothing, and a failed write is
/// not reported.
class Settings {
 public:
    explicit Settings(RegistryStore& store);

    /// Returns the value of the key, or `pValue` when it is missing or empty; with `pWrite`, writes `pValue` and
    /// returns "". The key is compared exactly; one without a section is stored in the program's own key.
    QString PropertyValue(const QString& pKey, const QString& pValue, bool pWrite);

    /// The setting for the frame, or its default in the table.
    QString forFrame(const QString& key);
    /// The same for the properties dialog.
    QString forDialog(const QString& key);
    void write(const QString& key, const QString& value);

    /// Whether the start creates an untitled document, and whether it restores the last session. Read from the store at
    /// each call.
    bool StartNewDocument();
    bool LoadLastFiles();

    static std::span<const SettingRow> table();

 private:
    RegistryStore& m_store;
};
