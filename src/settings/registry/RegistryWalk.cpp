#include "settings/registry/RegistryWalk.h"

#include "settings/registry/RegistryData.h"

QStringList walkSubKeys(RegistryStore& store, RegistryRoot root, const QString& path, int capacity) {
    QStringList stored;
    if (store.subKeys(root, path, stored) != RegistryCode::Ok)
        return {};
    QStringList names;
    for (const QString& name : stored) {
        if (name.size() >= capacity)
            break;
        names.append(RegistryData::textToZero(name));
    }
    return names;
}
