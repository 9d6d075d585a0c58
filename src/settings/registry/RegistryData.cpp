#include "settings/registry/RegistryData.h"

#include <QtEndian>

namespace {

QByteArray bytesOf(const QString& units) {
    QByteArray bytes(units.size() * 2, Qt::Uninitialized);
    qToLittleEndian<quint16>(units.utf16(), units.size(), bytes.data());
    return bytes;
}

QByteArray firstFour(const RegistryValue& value) {
    return value.data.left(4).leftJustified(4, '\0');
}

}  // namespace

namespace RegistryData {

RegistryValue fromText(const QString& text, qint32 type) {
    return {type, bytesOf(text + QChar(QChar::Null))};
}

RegistryValue fromInteger(qint32 number) {
    QByteArray bytes(4, Qt::Uninitialized);
    qToLittleEndian(number, bytes.data());
    return {RegistryType::Integer, bytes};
}

RegistryValue fromTexts(const QStringList& texts) {
    QString joined;
    for (const QString& text : texts)
        joined += text + QChar(QChar::Null);
    return fromText(joined, RegistryType::StringList);
}

QString units(const RegistryValue& value) {
    QString text(value.data.size() / 2, Qt::Uninitialized);
    qFromLittleEndian<quint16>(value.data.constData(), text.size(), text.data());
    return text;
}

QString textToZero(const QString& units) {
    return units.left(units.indexOf(QChar(QChar::Null)));
}

qint32 littleEndian(const RegistryValue& value) {
    return qFromLittleEndian<qint32>(firstFour(value).constData());
}

qint32 bigEndian(const RegistryValue& value) {
    return qFromBigEndian<qint32>(firstFour(value).constData());
}

}  // namespace RegistryData
