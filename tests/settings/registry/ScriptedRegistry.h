#pragma once

#include "settings/registry/MemoryRegistry.h"

#include <optional>

/// A registry whose operations return the results that a test sets.
class ScriptedRegistry : public MemoryRegistry {
 public:
    std::optional<int> createResult;
    std::optional<int> deleteResult;
    std::optional<int> writeResult;
    std::optional<int> readResult;
    QString undeletable;  ///< a path that refuses to go

    int createKey(RegistryRoot root, const QString& path) override {
        return createResult ? *createResult : MemoryRegistry::createKey(root, path);
    }
    int deleteKey(RegistryRoot root, const QString& path) override {
        if (!undeletable.isEmpty() && path == undeletable)
            return RegistryCode::AccessDenied;
        return deleteResult ? *deleteResult : MemoryRegistry::deleteKey(root, path);
    }
    int readValue(RegistryRoot root, const QString& path, const QString& name, RegistryValue& value) override {
        const int code = MemoryRegistry::readValue(root, path, name, value);
        return readResult ? *readResult : code;
    }
    int writeValue(RegistryRoot root, const QString& path, const QString& name, const RegistryValue& value) override {
        return writeResult ? *writeResult : MemoryRegistry::writeValue(root, path, name, value);
    }
};
