#pragma once

#include <QtGlobal>

#include <algorithm>
#include <string_view>

/// The bytes of a text as the editing control holds them: UTF-8, joints included, in two runs around a gap. Offsets
/// count bytes from 0. What range() gives is good until the next change.
class HeldText {
 public:
    virtual ~HeldText() = default;

    virtual qint64 length() const = 0;
    /// Where the gap lies; a range that does not span it costs nothing.
    virtual qint64 gap() const = 0;
    virtual std::string_view range(qint64 from, qint64 length) const = 0;

    virtual qint64 lineCount() const = 0;
    virtual qint64 lineOf(qint64 byte) const = 0;
    virtual qint64 lineStart(qint64 line) const = 0;

    /// Hands the bytes from `from` to before `to` to `take`, in one or two runs, without moving the gap.
    template <typename Take>
    void forEachRun(qint64 from, qint64 to, Take take) const {
        const qint64 middle = std::clamp(gap(), from, to);
        if (middle > from)
            take(range(from, middle - from));
        if (to > middle)
            take(range(middle, to - middle));
    }
};
