#pragma once

#include "platform/ByteSource.h"
#include "platform/SystemError.h"

#include <QByteArray>
#include <QString>

#include <algorithm>

/// What the commands of the tool end with, and what they have in common. Paths are absolute.
namespace ToolOutput {

enum ExitCode {
    Done = 0,
    Missing = 1,  ///< the record or journal, or the file in it, doesn't exist
    Misused = 2,  ///< the arguments can't be understood
    Failed = 3,   ///< a file can't be read or written, or a running program has the record or journal
    Unfit = 4     ///< it is damaged, or the file it is based on is another one
};

/// On standard error; returns the code.
int say(ExitCode code, const QString& text);
/// On standard output. False: it cannot be written.
bool print(const QString& text);
/// A text as it can be shown in a terminal: control characters and bytes that are no text are escaped.
QString shown(const QString& text);

/// A value of an enumeration and what is said of it.
template <typename Value>
struct ValueText {
    Value value;
    const char* text;
};
/// What is said of the value; the table has all of them.
template <typename Value, std::size_t Count>
QString textOf(const ValueText<Value> (&table)[Count], Value value) {
    return QLatin1String(std::ranges::find(table, value, &ValueText<Value>::value)->text);
}

/// Reports why a record or journal (`kind`) was not opened; `Opening` is that of RecordFile or JournalFile.
template <typename Opening>
int sayNotOpened(const char* kind, const QString& name, Opening opening) {
    if (opening == Opening::Missing)
        return say(Missing, u"%1: no such %2"_qs.arg(name, QLatin1String(kind)));
    return say(Failed, opening == Opening::InUse ? u"%1: a running program uses it"_qs.arg(name)
                                                 : u"%1: not a file of your own, or not readable"_qs.arg(name));
}

QByteArray nameOf(const QString& path);
/// A new file, or nothing: one that exists is left alone, and a link is not followed. Nothing is left after an error.
SystemError writeNew(const QString& path, ByteSource& source);

}  // namespace ToolOutput
