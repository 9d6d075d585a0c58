#pragma once

#include "platform/ByteSource.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <string_view>

/// Bytes that look like none of another seed.
QByteArray noise(qsizetype length, quint64 seed);

/// The bytes of a regular file, whose links are followed; nothing when it is missing or cannot be read.
std::optional<QByteArray> bytesOf(const QByteArray& name);
/// Overwrites the file in place, or creates it. An error ends the program: the harness cannot work then.
void putBytes(const QByteArray& name, const QByteArray& bytes);
/// Ends the program with a message when `done` is false.
void mustWork(bool done, const QByteArray& what);

/// Supplies bytes in parts of one length, as contents that are not in memory as a whole.
class Parts : public ByteSource {
 public:
    Parts(QByteArray bytes, qsizetype partLength) : m_bytes(std::move(bytes)), m_partLength(partLength) {}

    qint64 length() const override { return m_bytes.size(); }
    SystemError next(BytePieces& pieces) override;
    bool rewind(Reading /*next*/) override {
        m_at = 0;
        return true;
    }

 private:
    QByteArray m_bytes;
    qsizetype m_partLength;
    qsizetype m_at = 0;
    std::string_view m_piece;
};
