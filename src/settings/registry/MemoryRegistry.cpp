#include "settings/registry/MemoryRegistry.h"

#include "settings/registry/RegistryPath.h"

MemoryRegistry::Key* MemoryRegistry::find(RegistryRoot root, const QString& path) {
    const RegistryPath key(path);
    if (key.isRoot())
        return &m_keys[{root, QByteArray()}];
    const auto found = m_keys.find({root, key.folded()});
    return found == m_keys.end() ? nullptr : &found->second;
}

int MemoryRegistry::openKey(RegistryRoot root, const QString& path) {
    if (!isRegistryRoot(root))
        return RegistryCode::InvalidRoot;
    return find(root, path) != nullptr ? RegistryCode::Ok : RegistryCode::NotFound;
}

int MemoryRegistry::createKey(RegistryRoot root, const QString& path) {
    if (!isRegistryRoot(root))
        return RegistryCode::InvalidRoot;
    const RegistryPath key(path);
    for (const RegistryPath::Step& step : key.steps())
        m_keys.try_emplace({root, step.path}, Key{step.name.spelling, {}});
    return RegistryCode::Ok;
}

int MemoryRegistry::deleteKey(RegistryRoot root, const QString& path) {
    if (const int code = openKey(root, path); code != RegistryCode::Ok)
        return code;
    QStringList below;
    subKeys(root, path, below, 1);
    const RegistryPath key(path);
    if (key.isRoot() || !below.isEmpty())
        return RegistryCode::AccessDenied;
    m_keys.erase({root, key.folded()});
    return RegistryCode::Ok;
}

int MemoryRegistry::readValue(RegistryRoot root, const QString& path, const QString& name, RegistryValue& value) {
    if (const int code = openKey(root, path); code != RegistryCode::Ok)
        return code;
    const auto& values = find(root, path)->values;
    const auto found = values.find(RegistryName(name).folded);
    if (found == values.end())
        return RegistryCode::NotFound;
    value = found->second.value;
    return RegistryCode::Ok;
}

int MemoryRegistry::writeValue(RegistryRoot root, const QString& path, const QString& name,
                               const RegistryValue& value) {
    if (const int code = createKey(root, path); code != RegistryCode::Ok)
        return code;
    const RegistryName valueName(name);
    auto& values = find(root, path)->values;
    values.try_emplace(valueName.folded, NamedValue{valueName.spelling, {}}).first->second.value = value;
    return RegistryCode::Ok;
}

int MemoryRegistry::deleteValue(RegistryRoot root, const QString& path, const QString& name) {
    if (const int code = openKey(root, path); code != RegistryCode::Ok)
        return code;
    return find(root, path)->values.erase(RegistryName(name).folded) > 0 ? RegistryCode::Ok : RegistryCode::NotFound;
}

int MemoryRegistry::subKeys(RegistryRoot root, const QString& path, QStringList& names, int limit) {
    names.clear();
    if (const int code = openKey(root, path); code != RegistryCode::Ok)
        return code;
    const RegistryPath key(path);
    const QByteArray prefix = key.isRoot() ? QByteArray() : key.folded() + '/';
    for (auto at = m_keys.lower_bound({root, prefix}); at != m_keys.end(); ++at) {
        const auto& [place, found] = *at;
        if (place.first != root || !place.second.startsWith(prefix) || names.size() == limit)
            break;
        if (place.second.size() > prefix.size() && place.second.indexOf('/', prefix.size()) < 0)
            names.append(QString::fromUtf8(found.spelling));
    }
    return RegistryCode::Ok;
}

int MemoryRegistry::valueNames(RegistryRoot root, const QString& path, QStringList& names) {
    names.clear();
    if (const int code = openKey(root, path); code != RegistryCode::Ok)
        return code;
    for (const auto& [folded, named] : find(root, path)->values)
        names.append(QString::fromUtf8(named.spelling));
    return RegistryCode::Ok;
}

int MemoryRegistry::runBatch(const std::function<int()>& work) {
    const std::map<Place, Key> before = m_keys;
    const int code = work();
    if (code != RegistryCode::Ok)
        m_keys = before;
    return code;
}
