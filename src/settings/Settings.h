#pragma once

#include <QString>

#include <span>

class RegistryStore;

/// One setting: its key, the section it lives in, and the texts that stand for it while it is missing: for the frame,
/// and for the properties dialog, which differs in two. A null default: whoever asks has to know one.
struct SettingRow {
    const char* key;
    const char* section;
    const char* frameDefault;
    const char* dialogDefault;
};

/// The door to the settings. Callers name a key and nothing else; the table below knows the section. Made over the
/// store by whoever owns that, and outlived by it. Nothing is kept here: every read asks the store. Reading writes
/// nothing, and a write that fails passes without a word.
class Settings {
 public:
    explicit Settings(RegistryStore& store);

    /// Reads the key, or gives `pValue` when it is missing or empty; with `pWrite`, writes `pValue` and gives "". The
    /// key is compared exactly; one that no section has lives in the program's own key.
    QString PropertyValue(const QString& pKey, const QString& pValue, bool pWrite);

    /// The setting for the frame, or its default in the table.
    QString forFrame(const QString& key);
    /// The same for the properties dialog.
    QString forDialog(const QString& key);
    void write(const QString& key, const QString& value);

    /// Whether the start makes an untitled document, and whether it brings back the last session. Asked for at the
    /// moment they are needed.
    bool StartNewDocument();
    bool LoadLastFiles();

    static std::span<const SettingRow> table();

 private:
    RegistryStore& m_store;
};
