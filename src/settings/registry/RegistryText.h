#pragma once

#include "settings/registry/RegistryStore.h"

#include <QList>

#include <optional>

/// The text form of the registry: what quillmark-reg exports, imports and shows. UTF-8, a line feed at each line's end:
///
///     quillmark-registry 1
///
///     [HKCU/Software/Quillmark/general]
///     @ = string:"the default value"
///     "RowHighlight" = string:"1"
///     "Size" = dword:42
///     "Bytes" = binary:00 ff
///
/// A key without values is a line in brackets alone. Types: string, expand, multi (strings with "," between), dword,
/// dword-be, binary; hex(N) for the bytes of any other type, and for data that isn't in the usual form of its type. In
/// quotes and brackets, \\ \" \n \r \t and \u{HEX} stand for invisible characters. Empty lines and lines that begin
/// with "#" or ";" are ignored.
///
/// Every value, name and key is read back unchanged.
namespace RegistryText {

struct KeyName {
    RegistryRoot root = HKEY_CURRENT_USER;
    QString path;
};

/// One line with content: a key, or a value in it.
struct Entry {
    KeyName key;
    bool isValue = false;
    QString name;
    RegistryValue value;
};

struct Parsed {
    QList<Entry> entries;
    int line = 0;     ///< of the first that isn't understood, from 1; 0 when all are
    QString problem;  ///< what is wrong with it
};

/// "HKCU/Software/..." with the short or the long name of the root, in any letter case.
std::optional<KeyName> keyFromText(const QString& text);
QString keyToText(const KeyName& key);

/// A key as its line has it, without the line's end.
QString keyLine(const KeyName& key);
/// One value as its line has it, without the line's end.
QString valueLine(const QString& name, const RegistryValue& value);
/// For a person: strings as they are, numbers in decimal, bytes as hexadecimal pairs, a line for each string of a list.
QString plainValue(const RegistryValue& value);
/// A value of a named type ("string", "expand", "multi", "dword", "dword-be", "binary" or a number with hexadecimal
/// data) from typed texts: any number of them for multi, one for the others.
std::optional<RegistryValue> valueFromPlain(const QString& type, const QStringList& data);

/// The key with all below it. Nothing when the key doesn't exist.
std::optional<QString> exportKey(RegistryStore& store, const KeyName& key);
Parsed parse(const QString& text);
/// Writes all entries, or none on failure; everything else in the store stays unchanged.
int import(RegistryStore& store, const QList<Entry>& entries);

}  // namespace RegistryText
