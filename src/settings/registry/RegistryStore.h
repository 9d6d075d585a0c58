#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

/// A root of the registry: its 32-bit handle, signed, so that a message shows it as the decimal number that such a
/// handle has always had (-2147483648 for the first).
using RegistryRoot = qint32;
inline constexpr RegistryRoot HKEY_CLASSES_ROOT = static_cast<qint32>(0x80000000U);
inline constexpr RegistryRoot HKEY_CURRENT_USER = static_cast<qint32>(0x80000001U);
inline constexpr RegistryRoot HKEY_LOCAL_MACHINE = static_cast<qint32>(0x80000002U);

/// The result numbers of the operations. Callers that only need success or failure compare with Ok.
namespace RegistryCode {
inline constexpr int Ok = 0;
inline constexpr int NotFound = 2;
inline constexpr int AccessDenied = 5;
inline constexpr int InvalidRoot = 6;
inline constexpr int OutOfMemory = 8;
inline constexpr int InvalidData = 13;
inline constexpr int DiskFull = 112;
inline constexpr int Busy = 170;
inline constexpr int MoreData = 234;
inline constexpr int BadStore = 1009;
inline constexpr int IoError = 1117;
}  // namespace RegistryCode

/// The types of a value. A store accepts any other number as well.
namespace RegistryType {
inline constexpr qint32 String = 1;
inline constexpr qint32 ExpandString = 2;  ///< string with environment references
inline constexpr qint32 Binary = 3;
inline constexpr qint32 Integer = 4;           ///< 32 bits, lowest byte first
inline constexpr qint32 IntegerBigEndian = 5;  ///< 32 bits, highest byte first
inline constexpr qint32 StringList = 7;        ///< strings, each with its zero, and a zero after the last
}  // namespace RegistryType

/// A stored value: its type and its bytes. Texts are UTF-16 units, lowest byte first, with their terminating zero
/// (RegistryData.h makes and reads them).
struct RegistryValue {
    qint32 type = 0;
    QByteArray data;

    bool operator==(const RegistryValue&) const = default;
};

/// The registry: under each of the three roots a tree of keys, each with named, typed values. The shell owns the only
/// one of the process; other code gets it by reference. Used by one thread.
///
/// A key is named by its path below the root. "/" separates the names in it; a "\" is a character like any other; empty
/// parts are ignored, so "a//b/" is "a/b" and "" is the root itself, which always exists and can't be deleted. The
/// value with the empty name is the key's default value. Names are compared without case, in the whole of Unicode, and
/// keep the spelling they were first written with. A key can exist without values; one with sub-keys can't be deleted.
///
/// Every operation returns a result number (RegistryCode) and never throws. A failed one has changed nothing.
class RegistryStore {
 public:
    virtual ~RegistryStore() = default;

    /// Ok when the key exists.
    virtual int openKey(RegistryRoot root, const QString& path) = 0;
    /// Creates the key and those above it; Ok also when it exists already.
    virtual int createKey(RegistryRoot root, const QString& path) = 0;
    /// Deletes the key with its values; AccessDenied when it has sub-keys or is a root.
    virtual int deleteKey(RegistryRoot root, const QString& path) = 0;

    virtual int readValue(RegistryRoot root, const QString& path, const QString& name, RegistryValue& value) = 0;
    /// Writes the value, and creates the key if needed.
    virtual int writeValue(RegistryRoot root, const QString& path, const QString& name, const RegistryValue& value) = 0;
    virtual int deleteValue(RegistryRoot root, const QString& path, const QString& name) = 0;

    /// The names of the sub-keys, ordered by name without case; at most `limit` of them when it isn't negative.
    virtual int subKeys(RegistryRoot root, const QString& path, QStringList& names, int limit = -1) = 0;
    /// The names of the values, ordered by name without case, the default value first.
    virtual int valueNames(RegistryRoot root, const QString& path, QStringList& names) = 0;

    /// Runs operations as one transaction: other processes see all of them or none, and when `work` returns anything
    /// but Ok they are rolled back. A store that has to begin a new file meanwhile calls `work` a second time.
    virtual int runBatch(const std::function<int()>& work) = 0;
};
