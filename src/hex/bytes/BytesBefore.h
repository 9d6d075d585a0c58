#pragma once

#include "platform/SystemError.h"

#include <QByteArray>

#include <functional>
#include <map>

/// The bytes of a file as they were at one moment: those that are overwritten afterwards are kept in memory first.
/// Owned by the file of a working copy while it is saved. Offsets and lengths are bytes.
class BytesBefore {
 public:
    /// No more than so much memory is used.
    static constexpr qint64 MostMemory = 64LL * 1024 * 1024;

    /// Reads from the file; returns the number of bytes read.
    using Read = std::function<qint64(qint64 at, char* buffer, qint64 count)>;

    explicit BytesBefore(qint64 mostMemory = MostMemory) : m_mostMemory(mostMemory) {}

    /// To be called before bytes are overwritten. After an error they must not be: EBUSY when too much would have to be
    /// kept.
    SystemError keep(qint64 at, qint64 count, const Read& read);
    /// Puts the bytes that are kept over those that were read from the file.
    void putInto(qint64 at, char* buffer, qint64 count) const;

 private:
    using Parts = std::map<qint64, QByteArray>;

    static qint64 endOf(const Parts::value_type& part) { return part.first + part.second.size(); }
    /// The first part that ends behind this offset.
    Parts::const_iterator partBehind(qint64 at) const;

    qint64 m_mostMemory;
    qint64 m_memory = 0;
    Parts m_parts;  ///< by offset; they do not overlap
};
