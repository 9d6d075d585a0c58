#pragma once

#include <QtGlobal>

/// Bytes of the held text, from the first to before the last.
struct Span {
    qint64 from = 0;
    qint64 to = 0;

    bool empty() const { return from >= to; }
    bool operator==(const Span&) const = default;
};

/// Numbers of lines, both included.
struct LineRange {
    qint64 first = 0;
    qint64 last = 0;
};
