#pragma once

#include <QtGlobal>

#include <algorithm>
#include <string_view>

/// Read access to the held text: the bytes of a text as the editing control holds them, UTF-8 with joints, in two runs
/// around a gap. The control owns the text; offsets count bytes from 0. A view returned by range() is valid until the
/// next change of the text.
class HeldText {
 public:
    virtual ~HeldText() = default;

    virtual qint64 length() const = 0;
    /// Offset of the gap. range() is cheap unless the range spans the gap, because then the gap must move.
    virtual qint64 gap() const = 0;
    virtual std::string_view range(qint64 from, qint64 length) const = 0;

    /// Held lines and their first bytes; lines count from 0, and a joint ends a held line too.
    virtual qint64 lineCount() const = 0;
    virtual qint64 lineOf(qint64 byte) const = 0;
    virtual qint64 lineStart(qint64 line) const = 0;

    /// Calls `take` with the bytes of [from, to), in one or two runs. Never moves the gap.
    template <typename Take>
    void forEachRun(qint64 from, qint64 to, Take take) const {
        const qint64 middle = std::clamp(gap(), from, to);
        if (middle > from)
            take(range(from, middle - from));
        if (to > middle)
            take(range(middle, to - middle));
    }
};
