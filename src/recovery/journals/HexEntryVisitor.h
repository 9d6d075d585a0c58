#pragma once

#include <QtGlobal>

#include <string_view>

/// Is passed the edits of a hex document in their order. Each function returns whether the visit is to continue.
/// Lengths are bytes, `at` counts from 0, and all bytes lie within the file, but for type(), whose place the visitor
/// checks.
class HexEntryVisitor {
 public:
    virtual ~HexEntryVisitor() = default;

    virtual bool typed(qint64 page, int row, int col, quint8 byte) = 0;
    virtual bool tookBack() = 0;
    virtual bool overwrote(qint64 at, std::string_view bytes) = 0;
    virtual bool filled(qint64 at, qint64 length, quint8 byte) = 0;
};
