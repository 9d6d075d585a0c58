#pragma once

#include <QByteArray>
#include <QString>

/// The message by which a later start passes a path to the running instance. Numbers are 32 bits wide, the lowest byte
/// first: the number 3, then the length of the rest, which is the path in UTF-8 and one NUL behind it.
namespace HandOverMessage {

/// In bytes without the NUL. No file has a longer path, and every message fits into the buffer of a connection.
constexpr qsizetype LongestPath = 65'535;

/// The message with this path. Empty when the path cannot be passed: it is empty, too long, or not a text that a file
/// can be named by.
QByteArray of(const QString& path);

}  // namespace HandOverMessage

/// Puts the message of one sender together from what has arrived. Never holds more than the longest message.
class HandOverReader {
 public:
    enum class State {
        Incomplete,
        Complete,
        Malformed,  ///< whatever comes now, it is not a message
    };

    /// As many bytes may be appended to bytes() at most; 0 once the state is not Incomplete.
    qsizetype missing() const;
    QByteArray& bytes() { return m_bytes; }

    State state() const;
    /// Of a complete message.
    QString path() const;

 private:
    bool isHeaderGood() const;

    QByteArray m_bytes;
};
