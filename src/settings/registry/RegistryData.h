#pragma once

#include "settings/registry/RegistryStore.h"

/// Making and reading of the bytes of registry values.
namespace RegistryData {

/// The text with its terminating zero, as a value of the type String unless another one is passed.
RegistryValue fromText(const QString& text, qint32 type = RegistryType::String);
RegistryValue fromInteger(qint32 number);
/// The strings of a list, each with its zero, and the closing zero.
RegistryValue fromTexts(const QStringList& texts);

/// Every character that is stored, terminating zeros too. An odd last byte is ignored.
QString units(const RegistryValue& value);
/// The characters before the first zero, or all of them when there is none.
QString textToZero(const QString& units);
/// The first four bytes as a number, lowest first; missing ones count as zero.
qint32 littleEndian(const RegistryValue& value);
/// The same, highest byte first.
qint32 bigEndian(const RegistryValue& value);

}  // namespace RegistryData
