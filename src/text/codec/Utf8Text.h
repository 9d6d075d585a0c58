#pragma once

#include <QByteArray>
#include <QString>

/// Whether a byte of UTF-8 continues a character and begins none.
inline bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

/// UTF-8 of a text in which a lone surrogate has become U+FFFD, as it does when it is typed.
QByteArray wellFormedUtf8(QString text);

/// The same with each line end (CR, LF, CR LF) turned into this one.
QByteArray utf8WithLineEnds(QString text, const QString& lineEnd);
