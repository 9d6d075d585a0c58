#include "hex/bytes/HexSearch.h"

#include <algorithm>
#include <utility>

namespace {

/// The watch is called once for so many matches within a block.
constexpr qint64 MatchesOfAWatch = 1024;

int percentAt(qint64 at, qint64 length) {
    return length == 0 ? 100 : static_cast<int>(std::clamp<qint64>(at * 100 / length, 0, 100));
}

}  // namespace

bool HexSearch::mayContinue(qint64 at, qint64 length) const {
    return !m_watch || m_watch(percentAt(at, length));
}

/// If a needle filled the block, the search could not advance.
qint64 HexSearch::blockFor(const HexNeedle& needle) const {
    return needle.overlap() < m_blockSize ? m_blockSize : m_blockSize + needle.overlap();
}

bool HexSearch::read(qint64 at, qint64 size, QByteArray& block) const {
    block.resize(static_cast<qsizetype>(size));
    const qint64 count = m_bytes.read(FilePosition(at), block.data(), size);
    if (count < 0)
        return false;
    block.resize(static_cast<qsizetype>(count));
    return true;
}

bool HexSearch::scanDown(const HexNeedle& needle, qint64 start, std::optional<FilePosition>& found) const {
    const qint64 length = m_bytes.length();
    const qint64 size = blockFor(needle);
    QByteArray block;
    for (qint64 at = start; at <= length; at += size - needle.overlap()) {
        if (!read(at, size, block))
            return false;
        if (const qsizetype index = needle.firstIn(block); index >= 0)
            found = FilePosition(at + index);
        if (found || length - at < size)
            break;
        if (!mayContinue(at, length))
            return false;
    }
    return true;
}

std::optional<FilePosition> HexSearch::findDown(const HexNeedle& needle, FilePosition start, bool goesOn) const {
    if (start.number() > m_bytes.length())
        return std::nullopt;
    std::optional<FilePosition> found;
    if (scanDown(needle, start.number(), found) && !found && goesOn)
        scanDown(needle, 1, found);
    return found;
}

std::optional<FilePosition> HexSearch::findUp(const HexNeedle& needle, FilePosition cursor, bool goesOn) const {
    const qint64 length = m_bytes.length();
    qint64 size = m_blockSize + needle.overlap();
    qint64 at = cursor.number() - 1;
    if (length == 0 || (at < 2 && !goesOn))
        return std::nullopt;
    if (at < 2)
        at = length;
    bool hasGoneOn = false;
    QByteArray block;
    for (;;) {
        const bool isLast = at - m_blockSize < 1;
        if (isLast)
            size = std::max<qint64>(at, needle.overlap());  // and stays so small when the search continues from the end
        at = isLast ? 1 : at - m_blockSize;
        if (!read(at, size, block))
            return std::nullopt;
        if (const qsizetype found = needle.lastIn(block); found >= 0)
            return FilePosition(at + found);
        if (!mayContinue(length - at, length))
            return std::nullopt;
        if (!isLast)
            continue;
        if (hasGoneOn || !goesOn)
            return std::nullopt;
        hasGoneOn = true;
        at = length;
    }
}

bool HexSearch::visitMatches(const HexNeedle& needle, const QByteArray& block, qint64 at, qint64 length,
                             const std::function<void(FilePosition)>& visit) const {
    qint64 matches = 0;
    for (qsizetype found = needle.firstIn(block); found >= 0; found = needle.firstIn(block, found + 1)) {
        visit(FilePosition(at + found));
        if (++matches % MatchesOfAWatch == 0 && !mayContinue(at + found, length))
            return false;
    }
    return true;
}

void HexSearch::forEachMatch(const HexNeedle& needle, const std::function<void(FilePosition)>& visit) const {
    const qint64 length = m_bytes.length();
    const qint64 size = blockFor(needle);
    QByteArray block;
    for (qint64 at = 1; at <= length; at += size - needle.overlap()) {
        if (!read(at, size, block) || !visitMatches(needle, block, at, length, visit))
            return;
        if (length - at < size || !mayContinue(at, length))
            return;
    }
}

qint64 HexSearch::count(const HexNeedle& needle) const {
    qint64 matches = 0;
    forEachMatch(needle, [&](FilePosition) { ++matches; });
    return matches;
}

HexSearch::Replaced HexSearch::replaceAll(const HexNeedle& needle, const QByteArray& replacement) {
    const std::string_view bytes(replacement.constData(), static_cast<std::size_t>(replacement.size()));
    Replaced replaced;
    forEachMatch(needle, [&](FilePosition at) {
        if (SystemError error = m_bytes.write(at, bytes))
            replaced.error = std::move(error);
        else
            ++replaced.matches;
    });
    return replaced;
}
