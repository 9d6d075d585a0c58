#include "text/held/TextMap.h"

#include "text/codec/Utf16Units.h"

#include <algorithm>
#include <utility>

namespace {

/// Bytes between two marks.
constexpr qint64 MarkDistance = 256 * 1024;

bool isAscii(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

}  // namespace

void TextMap::reset(bool ascii, JointKind kind, std::vector<qint64> joints) {
    m_unsettled = {};
    m_ascii = ascii;
    m_joints.reset(kind, std::move(joints));
    m_marks.assign(1, Mark{});
    m_lastAsked = {};
}

void TextMap::setJointKind(JointKind kind) {
    settle();
    m_joints.reset(kind, {});
}

void TextMap::beforeInsert(qint64 at, qint64 length) {
    settle();
    m_lastAsked = {};
    m_unsettled = {at, length};
}

void TextMap::settle() const {
    const auto [at, length] = std::exchange(m_unsettled, {});
    if (length == 0)
        return;
    const std::string_view added = m_text.range(at, length);
    const char next = at + length < m_text.length() ? m_text.range(at + length, 1).front() : '\0';
    m_joints.textInserted(at, added, next);
    if (m_ascii && isAscii(added))
        return;
    m_ascii = false;
    const qint64 units = countUtf16Units(added);
    for (auto mark = m_marks.rbegin(); mark != m_marks.rend() && mark->byte > at; ++mark) {
        mark->byte += length;
        mark->units += units;
    }
}

void TextMap::beforeDelete(qint64 at, qint64 length) {
    settle();
    m_lastAsked = {};
    if (!m_ascii && m_marks.back().byte > at) {
        const qint64 units = countUnits(at, at + length);
        const auto beyond = [](qint64 byte, const Mark& mark) { return byte < mark.byte; };
        const auto first = std::upper_bound(m_marks.begin(), m_marks.end(), at, beyond);
        auto last = std::upper_bound(first, m_marks.end(), at + length, beyond);
        for (auto mark = last; mark != m_marks.end(); ++mark) {
            mark->byte -= length;
            mark->units -= units;
        }
        m_marks.erase(first, last);
    }
    m_joints.textDeleted(at, length);
}

void TextMap::forgetBehind(qint64 byte) {
    settle();
    m_lastAsked = {};
    std::erase_if(m_marks, [byte](const Mark& mark) { return mark.byte > byte; });
}

qint64 TextMap::countUnits(qint64 from, qint64 to) const {
    qint64 units = 0;
    m_text.forEachRun(from, to, [&units](std::string_view run) { units += countUtf16Units(run); });
    return units;
}

/// Counts on from the last mark, until the last mark is less than MarkDistance before `byte`.
void TextMap::extendMarks(qint64 byte) const {
    while (m_marks.back().byte + MarkDistance <= byte) {
        const Mark& last = m_marks.back();
        const qint64 next = last.byte + MarkDistance;
        m_marks.push_back({next, last.units + countUnits(last.byte, next)});
    }
}

qint64 TextMap::unitsBefore(qint64 byte) const {
    settle();
    if (m_ascii)
        return byte;
    extendMarks(byte);
    const auto beyond = std::upper_bound(m_marks.begin(), m_marks.end(), byte,
                                         [](qint64 value, const Mark& mark) { return value < mark.byte; });
    const Mark& mark = *std::prev(beyond);
    const Mark& base = m_lastAsked.byte > mark.byte && m_lastAsked.byte <= byte ? m_lastAsked : mark;
    m_lastAsked = {byte, base.units + countUnits(base.byte, byte)};
    return m_lastAsked.units;
}

qint64 TextMap::positionOf(qint64 byte) const {
    return unitsBefore(byte) - joints().before(byte);
}

qint64 TextMap::byteOfUnits(const Mark& from, qint64 units) const {
    qint64 byte = from.byte;
    qint64 left = units - from.units;
    m_text.forEachRun(byte, m_text.length(), [&](std::string_view run) {
        if (left <= 0)
            return;
        const qint64 taken = bytesForUtf16Units(run, left);
        left -= countUtf16Units(run.substr(0, static_cast<std::size_t>(taken)));
        byte += taken;
    });
    return byte;
}

qint64 TextMap::byteOf(qint64 position) const {
    const qint64 length = m_text.length();
    // The number of units before the wanted byte is position + joints before it. The number of joints is found by
    // binary search over the joints, since their positions are ascending.
    const auto& offsets = joints().offsets();
    const auto joint = std::partition_point(offsets.begin(), offsets.end(),
                                            [&](qint64 offset) { return positionOf(offset) < position; });
    const qint64 units = position + (joint - offsets.begin());
    if (m_ascii)
        return std::clamp<qint64>(units, 0, length);
    while (m_marks.back().units < units && m_marks.back().byte + MarkDistance <= length)
        extendMarks(m_marks.back().byte + MarkDistance);
    const auto beyond = std::upper_bound(m_marks.begin(), m_marks.end(), units,
                                         [](qint64 value, const Mark& mark) { return value < mark.units; });
    return byteOfUnits(beyond == m_marks.begin() ? Mark{} : *std::prev(beyond), units);
}

qint64 TextMap::lineCount() const {
    return m_text.lineCount() - static_cast<qint64>(joints().count());
}

qint64 TextMap::lineOf(qint64 byte) const {
    const qint64 heldLine = m_text.lineOf(byte);
    return heldLine - joints().before(m_text.lineStart(heldLine));
}

/// Returns the held line in which a line of the text begins: the first one that belongs to it.
qint64 TextMap::heldLineOfLine(qint64 line) const {
    if (joints().empty())
        return std::min(line, m_text.lineCount() - 1);
    qint64 low = 0;
    qint64 high = m_text.lineCount() - 1;
    while (low < high) {
        const qint64 middle = low + (high - low) / 2;
        if (middle - m_joints.before(m_text.lineStart(middle)) < line)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

qint64 TextMap::lineBegin(qint64 line) const {
    return m_text.lineStart(heldLineOfLine(std::max<qint64>(line, 0)));
}

qint64 TextMap::lineBeginOf(qint64 byte) const {
    return joints().empty() ? m_text.lineStart(m_text.lineOf(byte)) : lineBegin(lineOf(byte));
}

qint64 TextMap::nextLineOf(qint64 byte) const {
    const qint64 line = lineOf(byte);
    return line + 1 < lineCount() ? lineBegin(line + 1) : m_text.length();
}

qint64 TextMap::lineEndOf(qint64 byte) const {
    const qint64 next = nextLineOf(byte);
    const qint64 begin = lineBeginOf(byte);
    if (lineOf(byte) + 1 >= lineCount())
        return next;
    const std::string_view tail = m_text.range(std::max(begin, next - 2), next - std::max(begin, next - 2));
    return next - (tail == "\r\n" ? 2 : 1);
}
