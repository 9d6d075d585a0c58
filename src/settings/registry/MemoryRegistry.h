#pragma once

#include "settings/registry/RegistryStore.h"

#include <map>
#include <utility>

/// A registry in memory: for tests, and for a run that must leave nothing behind.
class MemoryRegistry : public RegistryStore {
 public:
    int openKey(RegistryRoot root, const QString& path) override;
    int createKey(RegistryRoot root, const QString& path) override;
    int deleteKey(RegistryRoot root, const QString& path) override;
    int readValue(RegistryRoot root, const QString& path, const QString& name, RegistryValue& value) override;
    int writeValue(RegistryRoot root, const QString& path, const QString& name, const RegistryValue& value) override;
    int deleteValue(RegistryRoot root, const QString& path, const QString& name) override;
    int subKeys(RegistryRoot root, const QString& path, QStringList& names, int limit = -1) override;
    int valueNames(RegistryRoot root, const QString& path, QStringList& names) override;
    int runBatch(const std::function<int()>& work) override;

 private:
    struct NamedValue {
        QByteArray spelling;
        RegistryValue value;
    };
    struct Key {
        QByteArray spelling;
        std::map<QByteArray, NamedValue> values;  ///< by folded name
    };
    using Place = std::pair<RegistryRoot, QByteArray>;  ///< root and folded path

    Key* find(RegistryRoot root, const QString& path);

    std::map<Place, Key> m_keys;
};
