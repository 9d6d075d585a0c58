#include "settings/desktop/DesktopRecord.h"

#include "settings/registry/RegistryData.h"
#include "settings/registry/modRegistry.h"

namespace {

const QString ContextMenu = u"ContextMenu"_qs;

QString recordKey() {
    return programKey() + u"/Desktop"_qs;
}

QString typesKey() {
    return recordKey() + u"/Types"_qs;
}

QString marksKey() {
    return recordKey() + u"/Marks"_qs;
}

int write(RegistryStore& store, const QString& key, const QString& name, const QString& text) {
    return store.writeValue(HKEY_CURRENT_USER, key, name, RegistryData::fromText(text));
}

QStringList namesIn(RegistryStore& store, const QString& key) {
    QStringList names;
    store.valueNames(HKEY_CURRENT_USER, key, names);
    return names;
}

/// Everything in one code: the first failure, or Ok.
int writeAll(RegistryStore& store, const DesktopRecord& record) {
    int code = record.contextMenu ? write(store, recordKey(), ContextMenu, u"1"_qs) : RegistryCode::Ok;
    for (auto each = record.types.begin(); code == RegistryCode::Ok && each != record.types.end(); ++each)
        code = write(store, typesKey(), each.key(), each.value().join(u';'));
    int number = 0;
    for (const QByteArray& mark : record.marks) {
        if (code == RegistryCode::Ok)
            code = write(store, marksKey(), QString::number(++number), QString::fromLatin1(mark.toPercentEncoding()));
    }
    return code;
}

}  // namespace

DesktopRecord DesktopRecord::load(RegistryStore& store) {
    DesktopRecord record;
    record.contextMenu = !GetRegString(store, HKEY_CURRENT_USER, recordKey(), ContextMenu).isEmpty();
    for (const QString& extension : namesIn(store, typesKey())) {
        const QString types = GetRegString(store, HKEY_CURRENT_USER, typesKey(), extension);
        record.types.insert(extension, types.split(u';', Qt::SkipEmptyParts));
    }
    for (const QString& name : namesIn(store, marksKey())) {
        const QString mark = GetRegString(store, HKEY_CURRENT_USER, marksKey(), name);
        record.marks.insert(QByteArray::fromPercentEncoding(mark.toLatin1()));
    }
    return record;
}

bool DesktopRecord::save(RegistryStore& store) const {
    if (*this == load(store))
        return true;
    return store.runBatch([&] {
        DeleteRegTree(store, HKEY_CURRENT_USER, recordKey());
        return writeAll(store, *this);
    }) == RegistryCode::Ok;
}
