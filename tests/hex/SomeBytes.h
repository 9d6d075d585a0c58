#pragma once

#include <QByteArray>

/// Bytes that differ from their neighbours of any page.
inline QByteArray someBytes(qsizetype length) {
    QByteArray bytes;
    for (qsizetype i = 0; i < length; ++i)
        bytes += static_cast<char>(i % 251);
    return bytes;
}
