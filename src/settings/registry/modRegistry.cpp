#include "settings/registry/modRegistry.h"

#include "settings/registry/RegistryData.h"
#include "settings/registry/RegistryWalk.h"

namespace {

constexpr int SectionBuffer = 256;

/// First the key alone, then the first tree below it as long as there is one and it can be deleted, then the key again.
bool deleteTree(RegistryStore& store, RegistryRoot root, const QString& key) {
    if (DeleteRegKey(store, root, key))
        return true;
    QStringList first;
    while (store.subKeys(root, key, first, 1) == RegistryCode::Ok && !first.isEmpty()) {
        if (!deleteTree(store, root, key + u'/' + first.constFirst()))
            break;
    }
    return DeleteRegKey(store, root, key);
}

}  // namespace

QString programKey() {
    return u"Software/Quillmark"_qs;
}

bool SetRegString(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName,
                  const QString& sValue) {
    return store.writeValue(hRoot, sKey, sName, RegistryData::fromText(sValue)) == RegistryCode::Ok;
}

QString GetRegString(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName) {
    QString text;
    ReadRegValue(store, hRoot, sKey, sName, text);
    return text;
}

bool SetRegDword(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName, qint32 lValue) {
    return store.writeValue(hRoot, sKey, sName, RegistryData::fromInteger(lValue)) == RegistryCode::Ok;
}

bool DeleteRegTree(RegistryStore& store, RegistryRoot hRoot, const QString& sKey) {
    if (store.openKey(hRoot, sKey) != RegistryCode::Ok)
        return false;
    // In one transaction, so that no other process sees half a tree; what could be deleted stays deleted in any case.
    bool deleted = false;
    const int code = store.runBatch([&] {
        deleted = deleteTree(store, hRoot, sKey);
        return RegistryCode::Ok;
    });
    return deleted && code == RegistryCode::Ok;
}

bool ReadRegValue(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName,
                  QString& sValue) {
    sValue.clear();
    RegistryValue value;
    const int code = store.readValue(hRoot, sKey, sName, value);
    if (code != RegistryCode::Ok || value.type != RegistryType::String)
        return false;
    sValue = RegistryData::textToZero(RegistryData::units(value));
    return true;
}

bool WriteRegValue(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName,
                   const QString& sValue) {
    return sValue.isEmpty() ? DeleteRegValue(store, hRoot, sKey, sName)
                            : SetRegString(store, hRoot, sKey, sName, sValue);
}

bool DeleteRegKey(RegistryStore& store, RegistryRoot hRoot, const QString& sKey) {
    return store.deleteKey(hRoot, sKey) == RegistryCode::Ok;
}

bool DeleteKey(RegistryStore& store, RegistryRoot hkey, const QString& strKey, const QString&) {
    return DeleteRegKey(store, hkey, strKey);
}

bool DeleteRegValue(RegistryStore& store, RegistryRoot hRoot, const QString& sKey, const QString& sName) {
    return store.deleteValue(hRoot, sKey, sName) == RegistryCode::Ok;
}

bool EnumRegSections(RegistryStore& store, const QString& sSection, QStringList& sNames) {
    const QString key = programKey() + u'/' + sSection;
    sNames = walkSubKeys(store, HKEY_CURRENT_USER, key, SectionBuffer);
    return store.openKey(HKEY_CURRENT_USER, key) == RegistryCode::Ok;
}
